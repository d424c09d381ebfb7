#include "support/LiveProgram.h"

#include "app/Lookup.h"
#include "app/Module1.h"
#include "app/Start.h"
#include "app/Window.h"
#include "app/WindowRegistry.h"
#include "support/Patience.h"
#include "windows/RegisterWindows.h"

#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QWindow>

#include <cstring>

namespace pontrel::test {

using namespace Qt::StringLiterals;

namespace {

const QString Scenario = u"live"_s;
const QString SettledLine = u"settled"_s;
constexpr int PollMs = 10;
constexpr int AnswerMs = 300;
constexpr Qt::Key SettlingKey = Qt::Key_F12; ///< It means nothing to any window.

QString pressLine(unsigned int code) {
    return u"press %1"_s.arg(code);
}

QString nameOf(const QWidget& widget) {
    const auto* button = qobject_cast<const QPushButton*>(&widget);
    return widget.objectName().isEmpty() && button ? button->text() : widget.objectName();
}

/// In the process that is driven: goes to the place and tells what stands in front, and which keys the
/// display has sent.
class Teller : public QObject, public QAbstractNativeEventFilter {
  public:
    explicit Teller(LivePlace place) : place_(std::move(place)) {
        qApp->installNativeEventFilter(this);
        qApp->installEventFilter(this);
        connect(&timer_, &QTimer::timeout, this, &Teller::look);
        timer_.start(PollMs);
    }
    ~Teller() override { qApp->removeNativeEventFilter(this); }

    bool nativeEventFilter(const QByteArray& /*type*/, void* message, qintptr* /*result*/) override {
        // The first two bytes of an event of the display's: what it is, and the key.
        constexpr unsigned char KeyPress = 2;
        unsigned char head[2];
        std::memcpy(head, message, sizeof head);
        if (head[0] == KeyPress)
            writeLine(pressLine(head[1]));
        return false;
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::KeyRelease && watched->isWindowType() &&
            static_cast<QKeyEvent*>(event)->key() == SettlingKey)
            writeLine(SettledLine);
        return false;
    }

  private:
    void look() {
        QWidget* front = QApplication::activeModalWidget() ? QApplication::activeModalWidget() : gMDI;
        if (!front || !front->isActiveWindow() || !front->windowHandle()->isExposed())
            return;
        if (front->objectName() == u"frmLogin"_s)
            logIn(*front);
        else if (gSysMenu)
            lookAt(*front);
    }
    void logIn(QWidget& login) {
        QTest::keyClicks(&control(login, u"txtUserName"_s), u"tester"_s);
        QTest::keyClicks(&control(login, u"txtPassword"_s), u"secret"_s);
        control<QPushButton>(login, u"cmdOK"_s).click();
    }
    void lookAt(QWidget& front) {
        if (!isThere_)
            goThere();
        // Where it opens, a lookup covers what is to be clicked behind it.
        if (qobject_cast<Lookup*>(&front) && front.frameGeometry().topLeft() != QPoint()) {
            front.move(0, 0);
            return;
        }
        if (auto* files = qobject_cast<QFileDialog*>(&front))
            fill(*files);
        const QString now = describe(front);
        if (now != told_)
            writeLine(now);
        told_ = now;
    }
    void goThere() {
        isThere_ = true;
        OpenToolWindow(static_cast<std::int16_t>(place_.module));
        if (auto* tabs = moduleWindow(place_.module)->findChild<QTabWidget*>(u"SSTab1"_s))
            tabs->setCurrentIndex(place_.tab);
        openChildWindow(place_.child);
        if (!place_.control.isEmpty())
            control(*gMDI, place_.control).setFocus();
    }
    /// Writes the name of the punch file into the dialog, whose button has no name of its own.
    static void fill(QFileDialog& files) {
        control<QDialogButtonBox>(files, u"buttonBox"_s)
            .button(QDialogButtonBox::Open)
            ->setObjectName(u"Open"_s);
        auto& name = control<QLineEdit>(files, u"fileNameEdit"_s);
        if (name.text().isEmpty())
            name.setText(files.directory().entryList({u"*.txt"_s}).value(0));
    }
    static QString openedWindow() {
        QString name;
        for (const Window* each : gMDI->findChildren<Window*>()) {
            if (each->isVisible() && !each->isUnloaded() && !each->visibleRegion().isEmpty())
                name = each->objectName();
        }
        return name;
    }
    static QString describe(const QWidget& front) {
        QStringList places;
        for (const QWidget* each : front.findChildren<QWidget*>()) {
            if (nameOf(*each).isEmpty() || !each->isVisible() || each->window() != &front)
                continue;
            const QPoint place = each->mapToGlobal(each->rect().center());
            places << u"%1=%2,%3"_s.arg(nameOf(*each)).arg(place.x()).arg(place.y());
        }
        const QWidget* focus = front.focusWidget();
        return QStringList{u"front"_s, front.objectName(), focus ? nameOf(*focus) : QString(), openedWindow(),
                           places.join(u';')}
            .join(u'|');
    }

    LivePlace place_;
    QTimer timer_;
    QString told_;
    bool isThere_ = false;
};

int live(const QStringList& arguments) {
    const Teller teller({arguments.at(0).toInt(), arguments.at(1), arguments.at(2).toInt(), arguments.at(3)});
    registerWindows();
    return Main();
}

} // namespace

Scenarios liveProgram() {
    return {{Scenario, live}};
}

LiveProgram::LiveProgram(const TestStore& store, const LivePlace& place)
    : process_(store.folder(), Scenario,
               {QString::number(place.module), place.child, QString::number(place.tab), place.control}) {
    const QString window = place.child.isEmpty() ? u"Form%1"_s.arg(place.module) : place.child;
    const auto isThere = [&] {
        return opened() == window && (place.control.isEmpty() || focus() == place.control);
    };
    if (!QTest::qWaitFor(isThere, PatienceMs))
        qFatal("the program does not come to its place: %s", qUtf8Printable(process_.errors()));
}

void LiveProgram::read() {
    const QStringList lines = process_.lines();
    // The last one may be in the middle of being written.
    for (; linesRead_ < lines.size() - (process_.endsALine() ? 0 : 1); ++linesRead_) {
        const QString& line = lines.at(linesRead_);
        ++counts_[line];
        if (!line.startsWith(u"front|"_s))
            continue;
        state_ = line.split(u'|');
        for (const QString& each : state_.at(4).split(u';', Qt::SkipEmptyParts)) {
            const QStringList place = each.section(u'=', -1).split(u',');
            places_[state_.at(1) + u'|' + each.section(u'=', 0, -2)] = {place.at(0).toInt(),
                                                                        place.at(1).toInt()};
        }
    }
}

QString LiveProgram::front() {
    read();
    return state_.value(1);
}

QString LiveProgram::focus() {
    read();
    return state_.value(2);
}

QString LiveProgram::opened() {
    read();
    return state_.value(3);
}

int LiveProgram::count(const QString& line) {
    read();
    return counts_.value(line);
}

bool LiveProgram::waitForFront(const QString& window) {
    return QTest::qWaitFor([&] { return front() == window || !isRunning(); }, PatienceMs) && isRunning();
}

void LiveProgram::click(const QString& window, const QString& control) {
    read();
    const auto place = places_.constFind(window + u'|' + control);
    if (place == places_.constEnd())
        qFatal("%s has shown no %s", qUtf8Printable(window), qUtf8Printable(control));
    input.clickAt(*place);
}

bool LiveProgram::hold(Qt::Key key) {
    constexpr int Presses = 40; // after the first delay of 0.66 s one every 0.04 s
    const QString line = pressLine(input.code(key));
    const int before = count(line);
    input.press(key);
    const bool held = QTest::qWaitFor([&] { return count(line) - before >= Presses; }, PatienceMs);
    input.release(key);
    return held && settle();
}

bool LiveProgram::settle() {
    const int before = count(SettledLine);
    for (int tries = 0; tries < PatienceMs / AnswerMs && isRunning(); ++tries) {
        // Pressed anew where it was dropped with other input.
        input.tap(SettlingKey);
        if (QTest::qWaitFor([&] { return count(SettledLine) > before; }, AnswerMs))
            return true;
    }
    return false;
}

} // namespace pontrel::test
