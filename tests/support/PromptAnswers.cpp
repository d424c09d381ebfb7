#include "support/AppSupport.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QWindow>

#include <algorithm>

namespace pontrel::test {

using namespace Qt::StringLiterals;

namespace {

constexpr int PollMs = 5;
constexpr int PollsForActivation = 400;

MsgIcon iconOf(const QMessageBox& box) {
    switch (box.icon()) {
    case QMessageBox::Information:
        return MsgIcon::Information;
    case QMessageBox::Question:
        return MsgIcon::Question;
    case QMessageBox::Warning:
        return MsgIcon::Exclamation;
    case QMessageBox::Critical:
        return MsgIcon::Critical;
    default:
        return MsgIcon::None;
    }
}

QString withoutAccessKey(QString caption) {
    if (const qsizetype bracket = caption.indexOf(u"(&"_s); bracket >= 0)
        caption.truncate(bracket);
    return caption.remove(u'&');
}

QStringList buttonsOf(const QWidget& dialog) {
    auto buttons = dialog.findChildren<QAbstractButton*>();
    buttons.removeIf([](const QAbstractButton* button) { return !button->isVisible(); });
    std::stable_sort(buttons.begin(), buttons.end(), [&dialog](const auto* a, const auto* b) {
        return a->mapTo(&dialog, QPoint()).x() < b->mapTo(&dialog, QPoint()).x();
    });
    QStringList captions;
    for (const QAbstractButton* button : buttons)
        captions << withoutAccessKey(button->text());
    return captions;
}

SeenPrompt look(QWidget& dialog) {
    SeenPrompt prompt;
    prompt.objectName = dialog.objectName();
    prompt.title = dialog.windowTitle();
    prompt.buttons = buttonsOf(dialog);
    prompt.picture = dialog.grab().toImage();
    if (const auto* box = qobject_cast<QMessageBox*>(&dialog)) {
        prompt.text = box->text();
        prompt.icon = iconOf(*box);
    } else if (const auto* input = qobject_cast<QInputDialog*>(&dialog)) {
        prompt.text = input->labelText();
    }
    return prompt;
}

QMessageBox::StandardButton standardButton(MsgAnswer answer) {
    switch (answer) {
    case MsgAnswer::Yes:
        return QMessageBox::Yes;
    case MsgAnswer::No:
        return QMessageBox::No;
    case MsgAnswer::Ok:
        break;
    }
    return QMessageBox::Ok;
}

} // namespace

PromptAnswers::PromptAnswers() {
    connect(&timer_, &QTimer::timeout, this, &PromptAnswers::poll);
    timer_.start(PollMs);
}

PromptAnswers::~PromptAnswers() {
    const QString told = told_;
    const QString left = trouble();
    if (left != told && !QTest::currentTestFailed())
        QTest::qFail(qPrintable(left), __FILE__, __LINE__);
}

PromptAnswers& PromptAnswers::expect(const QString& objectName, Action action) {
    expected_.append({objectName, std::move(action), false});
    return *this;
}

PromptAnswers& PromptAnswers::expectAndLeave(const QString& objectName, Action action) {
    expected_.append({objectName, std::move(action), true});
    return *this;
}

PromptAnswers& PromptAnswers::expectMsgBox(MsgAnswer answer) {
    return expect(u"MsgBox"_s, [this, answer](QWidget& dialog) {
        auto& box = static_cast<QMessageBox&>(dialog);
        if (QAbstractButton* button = box.button(standardButton(answer)))
            click(*button);
        else
            trouble_ << u"the message \"%1\" has no such button"_s.arg(box.text());
    });
}

PromptAnswers& PromptAnswers::expectClick(const QString& objectName, const QString& controlName) {
    return expect(objectName, [controlName](QWidget& dialog) { click(control(dialog, controlName)); });
}

PromptAnswers& PromptAnswers::expectFile(const QString& path) {
    return expect(u"CommonDialog1"_s, [path](QWidget& dialog) {
        auto& files = static_cast<QFileDialog&>(dialog);
        if (path.isEmpty()) {
            files.reject();
            return;
        }
        auto& name = control<QLineEdit>(files, u"fileNameEdit"_s);
        name.setText(path);
        QTest::keyClick(&name, Qt::Key_Return);
    });
}

QString PromptAnswers::trouble() const {
    QStringList all = trouble_;
    for (const Expectation& missing : expected_)
        all << u"%1 did not come"_s.arg(missing.objectName);
    told_ = all.join(u"; "_s);
    return told_;
}

void PromptAnswers::poll() {
    QWidget* dialog = QApplication::activeModalWidget();
    if (!dialog || !dialog->isVisible() || inAction_.contains(dialog))
        return;
    // A display without a window manager activates nothing; then the answer comes all the same, only later.
    const bool ready =
        dialog->windowHandle() && dialog->windowHandle()->isExposed() && dialog->isActiveWindow();
    if (!ready && ++waited_ < PollsForActivation)
        return;
    waited_ = 0;
    inAction_.append(dialog);
    // Posted, not called: a timer does not fire again while its own routine waits in a further dialog.
    QMetaObject::invokeMethod(
        this,
        [this, target = QPointer<QWidget>(dialog)] {
            if (!target || !target->isVisible() || answer(*target))
                inAction_.removeOne(target);
        },
        Qt::QueuedConnection);
}

bool PromptAnswers::answer(QWidget& dialog) {
    const QPointer<QWidget> target(&dialog);
    seen_.append(look(dialog));
    const SeenPrompt& prompt = seen_.constLast();
    if (expected_.isEmpty() || expected_.constFirst().objectName != prompt.objectName) {
        trouble_ << u"unexpected %1 \"%2\": \"%3\""_s.arg(prompt.objectName, prompt.title, prompt.text);
        if (auto* modal = qobject_cast<QDialog*>(target))
            modal->done(QDialog::Rejected);
        return true;
    }
    const Expectation next = expected_.takeFirst();
    next.action(dialog);
    return !next.leave;
}

} // namespace pontrel::test
