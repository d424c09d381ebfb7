#include "support/AppSupport.h"
#include "support/Patience.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableWidget>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

template<typename Control>
Control* placed(Control* control, const QString& name, const QRect& place) {
    control->setObjectName(name);
    control->setAccessibleName(name);
    control->setGeometry(place);
    return control;
}

/// A window without fault, of one control of each kind.
struct SmallWindow : QWidget {
    QLabel* label = placed(new QLabel(u"名稱："_s, this), u"Label1"_s, {10, 10, 60, 24});
    QLineEdit* box = placed(new QLineEdit(this), u"Text1"_s, {80, 10, 100, 24});
    QCheckBox* check = placed(new QCheckBox(u"中途休息"_s, this), u"Check1"_s, {10, 40, 120, 24});
    QGroupBox* group = placed(new QGroupBox(u"時段設定"_s, this), u"Frame1"_s, {10, 70, 200, 60});
    QRadioButton* first = placed(new QRadioButton(u"放假"_s, group), u"Option1(0)"_s, {10, 30, 80, 24});
    QRadioButton* second = placed(new QRadioButton(u"上班"_s, group), u"Option1(1)"_s, {100, 30, 80, 24});
    QPushButton* button = placed(new QPushButton(u"離開"_s, this), u"CtrlCmd(0)"_s, {10, 140, 80, 30});
    QTabWidget* tabs = placed(new QTabWidget(this), u"SSTab1"_s, {220, 10, 200, 160});
    QTableWidget* table = placed(new QTableWidget(1, 2), u"TDBG1"_s, {0, 0, 180, 60});
    QLineEdit* behind = placed(new QLineEdit, u"Text2"_s, {10, 10, 100, 24}); ///< On the page behind.

    SmallWindow() {
        resize(430, 200);
        setAccessibleName(u"視窗"_s);
        label->setBuddy(box);
        table->setTabKeyNavigation(false);
        table->horizontalHeader()->setMinimumSectionSize(10);
        table->setHorizontalHeaderLabels({u"員工碼"_s, u"姓名"_s});
        for (const auto& [page, caption] :
             {std::pair<QWidget*, QString>{table, u"記錄"_s}, {behind, u"查詢"_s}}) {
            auto* sheet = new QWidget;
            page->setParent(sheet);
            tabs->addTab(sheet, caption);
        }
    }
};

/// A fault done to the window, and what is to be told of it.
struct Damage {
    const char* title;
    std::function<void(SmallWindow&)> act;
    QString told;
};

const std::vector<Damage> Damages = {
    {"a window without accessible name", [](SmallWindow& window) { window.setAccessibleName({}); },
     u"QWidget \"\" has no accessible name"_s},
    {"a box without object name", [](SmallWindow& window) { window.box->setObjectName({}); },
     u"QLineEdit \"\" has no object name"_s},
    {"a box without accessible name", [](SmallWindow& window) { window.box->setAccessibleName({}); },
     u"QLineEdit \"Text1\" has no accessible name"_s},
    {"a disabled button without accessible name",
     [](SmallWindow& window) {
         window.button->setAccessibleName({});
         window.button->setEnabled(false);
     },
     u"QPushButton \"CtrlCmd(0)\" has no accessible name"_s},
    {"two controls of one name, one on a page behind",
     [](SmallWindow& window) { window.behind->setObjectName(u"Text1"_s); },
     u"QLineEdit \"Text1\" is not the only one of its name"_s},
    {"an access key that leads nowhere",
     [](SmallWindow& window) {
         window.label->setText(u"名稱(&N)"_s);
         window.label->setBuddy(nullptr);
     },
     u"QLabel \"Label1\" has an access key but no buddy"_s},
    {"a caption that leads nowhere", [](SmallWindow& window) { window.label->setBuddy(nullptr); },
     u"QLabel \"Label1\" \"名稱：\" leads to nothing"_s},
    {"a button that Enter presses from elsewhere",
     [](SmallWindow& window) { window.button->setAutoDefault(true); },
     u"QPushButton \"CtrlCmd(0)\" is pressed by Enter from elsewhere"_s},
    {"a cut label", [](SmallWindow& window) { window.label->resize(30, 24); },
     u"QLabel \"Label1\" cuts \"名稱：\""_s},
    {"a label of several lines, cut below",
     [](SmallWindow& window) {
         window.label->setWordWrap(true);
         window.label->setText(u"一二三四五六七八九十"_s);
     },
     u"QLabel \"Label1\" cuts \"一二三四五六七八九十\""_s},
    {"a cut button", [](SmallWindow& window) { window.button->resize(28, 30); },
     u"QPushButton \"CtrlCmd(0)\" cuts \"離開\""_s},
    {"a button that is too low", [](SmallWindow& window) { window.button->resize(80, 10); },
     u"QPushButton \"CtrlCmd(0)\" cuts \"離開\""_s},
    {"a cut check box", [](SmallWindow& window) { window.check->resize(60, 24); },
     u"QCheckBox \"Check1\" cuts \"中途休息\""_s},
    {"a cut radio button", [](SmallWindow& window) { window.second->resize(40, 24); },
     u"QRadioButton \"Option1(1)\" cuts \"上班\""_s},
    {"a cut group title", [](SmallWindow& window) { window.group->setTitle(QString(40, u'時')); },
     u"QGroupBox \"Frame1\" cuts \"%1\""_s.arg(QString(40, u'時'))},
    {"a tab out of sight", [](SmallWindow& window) { window.tabs->setTabText(0, QString(11, u'記')); },
     u"QTabBar \"qt_tabwidget_tabbar\" cuts \"查詢\""_s},
    {"a cut column caption", [](SmallWindow& window) { window.table->setColumnWidth(0, 30); },
     u"QTableWidget \"TDBG1\" cuts \"員工碼\""_s},
    {"a control out of its place", [](SmallWindow& window) { window.first->move(-5, 30); },
     u"QRadioButton \"Option1(0)\" reaches out of its place"_s},
    {"a control over another", [](SmallWindow& window) { window.group->move(10, 60); },
     u"QCheckBox \"Check1\" and QGroupBox \"Frame1\" overlap"_s},
    {"tabs over a button", [](SmallWindow& window) { window.button->resize(250, 30); },
     u"QPushButton \"CtrlCmd(0)\" and QTabWidget \"SSTab1\" overlap"_s},
};

} // namespace

/// Whether the window walker finds what it is there for.
class ControlFaultsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aWindowWithoutFaultPasses();
    void eachFaultIsTold_data();
    void eachFaultIsTold();
    void whatIsNotShownHasItsNameAlone();
    void aControlThatTabDoesNotReachIsTold();
};

void ControlFaultsTest::aWindowWithoutFaultPasses() {
    SmallWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window, PatienceMs));
    QCOMPARE(controlFaults(window).join(u'\n'), QString());
    QCOMPARE(tabFaults(window).join(u'\n'), QString());
}

void ControlFaultsTest::eachFaultIsTold_data() {
    QTest::addColumn<std::size_t>("damage");
    for (std::size_t damage = 0; damage < Damages.size(); ++damage)
        QTest::addRow("%s", Damages.at(damage).title) << damage;
}

void ControlFaultsTest::eachFaultIsTold() {
    QFETCH(const std::size_t, damage);
    SmallWindow window;
    window.show();
    Damages.at(damage).act(window);
    QCOMPARE(controlFaults(window).join(u'\n'), Damages.at(damage).told);
}

void ControlFaultsTest::whatIsNotShownHasItsNameAlone() {
    SmallWindow window;
    window.show();
    window.behind->resize(1000, 24);
    window.behind->setAccessibleName({});
    window.check->resize(10, 24);
    window.check->hide();
    QCOMPARE(controlFaults(window).join(u'\n'), QString());
    window.tabs->setCurrentIndex(1);
    QCOMPARE(controlFaults(window), QStringList({u"QLineEdit \"Text2\" has no accessible name"_s,
                                                 u"QLineEdit \"Text2\" reaches out of its place"_s}));
}

void ControlFaultsTest::aControlThatTabDoesNotReachIsTold() {
    SmallWindow window;
    // It keeps the Tab key for itself, and so all that comes behind it from the keyboard.
    auto* keeper = placed(new QPlainTextEdit(&window), u"Memo"_s, {10, 172, 80, 24});
    QWidget::setTabOrder(window.box, keeper);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window, PatienceMs));
    window.box->setFocus();
    const QStringList faults = tabFaults(window);
    QVERIFY(faults.contains(u"QCheckBox \"Check1\" is not in the tab order"_s));
    QVERIFY(faults.contains(u"QPushButton \"CtrlCmd(0)\" is not in the tab order"_s));
    QVERIFY(!faults.join(u'\n').contains(u"Memo"_s));
}

int main(int argc, char** argv) {
    return runTests<ControlFaultsTest>(argc, argv);
}

#include "ControlFaultsTest.moc"
