#include "app/controls/DropList.h"
#include "app/controls/TDBDate.h"
#include "support/AppSupport.h"
#include "support/Patience.h"
#include "support/RealInput.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

QPoint middleOf(const QWidget& widget) {
    return widget.mapToGlobal(widget.rect().center());
}

/// From now on two clicks at one place are a double click, however slow the machine is.
void letClicksBeDouble() {
    QApplication::setDoubleClickInterval(10 * PatienceMs);
}

/// A button over nearly all of the screen, so that whatever opens lies on it; in a corner what opens lists,
/// and a check box that none of them covers.
struct WideForm : QWidget {
    QCheckBox check;
    TDBDate date;
    DropList list;
    QPushButton button{u"按鈕"_s};
    int clicks = 0;

    WideForm() {
        auto* line = new QHBoxLayout;
        for (QWidget* each : std::initializer_list<QWidget*>{&check, &date, &list})
            line->addWidget(each);
        line->addStretch();
        auto* rows = new QVBoxLayout(this);
        rows->addLayout(line);
        rows->addWidget(&button);
        button.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        list.setMinimumWidth(160);
        list.addItems({u"一"_s, u"二"_s, u"三"_s});
        onEvent(&button, &QPushButton::clicked, this, [this] { ++clicks; });
        resize(960, 680);
        show();
        if (!QTest::qWaitForWindowActive(this, PatienceMs))
            qFatal("the window does not become active");
    }
    /// Whether a click elsewhere, behind all that was clicked before, arrives.
    [[nodiscard]] bool answers(RealInput& input) {
        const bool before = check.isChecked();
        input.clickAt(middleOf(check));
        return QTest::qWaitFor([&] { return check.isChecked() != before; }, PatienceMs);
    }
    /// Whether a click on the button presses it.
    [[nodiscard]] bool takesClick(RealInput& input, QPoint place) {
        const int before = clicks;
        input.clickAt(place);
        return QTest::qWaitFor([&] { return clicks == before + 1; }, PatienceMs);
    }
};

} // namespace

/// Real double clicks on what closes with the first half, or opens with it: the second half presses nothing
/// of what has come to lie under the mouse.
class DoubleClickTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init() { QApplication::setDoubleClickInterval(1); }
    void onAMessage();
    void onADayOfACalendar();
    void onAnEntryOfAList();
    void onAButtonThatOpensADialog();
};

void DoubleClickTest::onAMessage() {
    WideForm form;
    RealInput input;
    PromptAnswers answers;
    QPoint place;
    answers.expect(u"MsgBox"_s, [&](QWidget& box) {
        place = middleOf(*static_cast<QMessageBox&>(box).button(QMessageBox::Ok));
        letClicksBeDouble();
        input.clickAt(place);
        QVERIFY(QTest::qWaitFor([&box] { return !box.isVisible(); }, PatienceMs));
    });
    MsgBox(u"訊息"_s);
    QCOMPARE(answers.trouble(), QString());
    input.clickAt(place);
    QVERIFY(QRect(form.button.mapToGlobal(QPoint()), form.button.size()).contains(place));
    QVERIFY(form.answers(input));
    QCOMPARE(form.clicks, 0);
    QVERIFY(form.takesClick(input, place));
}

void DoubleClickTest::onADayOfACalendar() {
    WideForm form;
    RealInput input;
    form.date.setDate(QDate(2026, 3, 5));
    form.date.showPopup();
    const auto& days = *form.date.calendar()->findChild<QAbstractItemView*>();
    QVERIFY(QTest::qWaitForWindowExposed(days.window(), PatienceMs));
    const QPoint place = middleOf(*days.viewport());
    QVERIFY(QRect(form.button.mapToGlobal(QPoint()), form.button.size()).contains(place));
    letClicksBeDouble();
    input.clickAt(place);
    QTRY_VERIFY_WITH_TIMEOUT(!form.date.calendar()->isVisible(), PatienceMs);
    input.clickAt(place);
    QVERIFY(form.date.date() != QDate(2026, 3, 5));
    QVERIFY(form.answers(input));
    QCOMPARE(form.clicks, 0);
    QVERIFY(form.takesClick(input, place));
}

void DoubleClickTest::onAnEntryOfAList() {
    WideForm form;
    RealInput input;
    form.list.showPopup();
    QAbstractItemView& entries = *form.list.view();
    QVERIFY(QTest::qWaitForWindowExposed(entries.window(), PatienceMs));
    const QPoint place =
        entries.viewport()->mapToGlobal(entries.visualRect(entries.model()->index(2, 0)).center());
    QVERIFY(QRect(form.button.mapToGlobal(QPoint()), form.button.size()).contains(place));
    letClicksBeDouble();
    input.clickAt(place);
    QTRY_VERIFY_WITH_TIMEOUT(!entries.isVisible(), PatienceMs);
    QCOMPARE(form.list.currentText(), u"三"_s);
    input.clickAt(place);
    QVERIFY(form.answers(input));
    QCOMPARE(form.clicks, 0);
    QVERIFY(form.takesClick(input, place));
}

void DoubleClickTest::onAButtonThatOpensADialog() {
    WideForm form;
    RealInput input;
    PromptAnswers answers;
    const QPoint place = middleOf(form.button);
    bool stood = false;
    onEvent(&form.button, &QPushButton::clicked, &form, [&form] {
        QDialog dialog(&form);
        dialog.setObjectName(u"Dialog"_s);
        auto* rows = new QVBoxLayout(&dialog);
        auto* option = new QPushButton(u"選項"_s);
        option->setObjectName(u"Option"_s);
        option->setCheckable(true);
        rows->addWidget(option);
        auto* cancel = new QPushButton(u"取消"_s);
        cancel->setObjectName(u"Cancel"_s);
        cancel->setMinimumSize(400, 300);
        cancel->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        rows->addWidget(cancel);
        connect(cancel, &QPushButton::clicked, &dialog, &QDialog::reject);
        (void)runModal(dialog);
    });
    answers.expect(u"Dialog"_s, [&](QWidget& dialog) {
        const auto& cancel = control(dialog, u"Cancel"_s);
        const auto& option = control<QPushButton>(dialog, u"Option"_s);
        QVERIFY(QRect(cancel.mapToGlobal(QPoint()), cancel.size()).contains(place));
        input.clickAt(place);
        input.clickAt(middleOf(option));
        stood = QTest::qWaitFor([&] { return option.isChecked(); }, PatienceMs);
        input.clickAt(place);
        QVERIFY(QTest::qWaitFor([&dialog] { return !dialog.isVisible(); }, PatienceMs));
    });
    letClicksBeDouble();
    input.clickAt(place);
    QTRY_VERIFY_WITH_TIMEOUT(stood, PatienceMs);
    QTRY_VERIFY_WITH_TIMEOUT(!QApplication::activeModalWidget(), PatienceMs);
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(form.clicks, 1);
}

int main(int argc, char** argv) {
    return runTests<DoubleClickTest>(argc, argv);
}

#include "DoubleClickTest.moc"
