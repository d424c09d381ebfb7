#include "support/Builders.h"
#include "windows/Walk.h"

#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPixmapCache>
#include <QPushButton>

#include <malloc.h>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

constexpr int Openings = 100;
constexpr int MostRounds = 5;

/// Less than any object of Qt takes, and more than what the heap goes up and down by itself.
constexpr double LeastBytes = 64;
#ifdef __SANITIZE_ADDRESS__
constexpr bool HeapIsWatched = true; ///< By the sanitizer, which tells of what is lost when the program ends.
#else
constexpr bool HeapIsWatched = false;
#endif

/// The grids with columns out of sight, but for the employees' list, which has every column of its rows.
QStringList wideGrids(const QWidget& window) {
    QStringList faults;
    for (const QString& grid : gridsOutOfSight(window)) {
        if (window.objectName() != u"Form1" || grid != u"TDBGrid1")
            faults << grid + u" has columns out of sight"_s;
    }
    return faults;
}

/// What a walk has found, and where.
class Findings {
  public:
    void look(QWidget& window, const QString& place) {
        QCoreApplication::processEvents();
        ++places_;
        const QStringList faults = controlFaults(window) + tabFaults(window) + wideGrids(window);
        for (const QString& fault : faults)
            faults_ << place + u": "_s + fault;
    }
    [[nodiscard]] int places() const { return places_; }
    [[nodiscard]] QString told() const { return faults_.join(u'\n'); }

  private:
    int places_ = 0;
    QStringList faults_;
};

bool isBox(const QWidget& control) {
    return control.inherits("QLineEdit") || control.inherits("QComboBox") || control.inherits("QCheckBox") ||
           control.inherits("QRadioButton");
}

/// What Tab comes to between the first box of the page in its edit state and the first button behind it, and
/// this button; its boxes are named "box".
QStringList fromFirstBoxToButton(const QWidget& window, QPushButton& save) {
    QStringList way;
    const QWidget* each = &save;
    do {
        each = each->nextInFocusChain();
        if (!window.isAncestorOf(each) || !each->isVisible() || !each->isEnabled() ||
            !(each->focusPolicy() & Qt::TabFocus))
            continue;
        const auto* button = qobject_cast<const QPushButton*>(each);
        if (isBox(*each) || !way.isEmpty())
            way << (isBox(*each) ? u"box"_s : button ? button->text() : each->objectName());
        if (button && !way.isEmpty())
            break;
    } while (each != &save);
    return way;
}

/// Rows in the lists of the windows, few enough to be quick.
void fill(Database& database) {
    addEmployee(database, u"10001"_s, {{u"EmpName", u"王小明"}, {u"UnitNo", u"1000"}});
    addSlot(database, u"A"_s, {{u"TimeName", u"日班"}});
    insertRow(database, u"Base01"_s, {{u"TitleNo", u"0001"}, {u"Title", u"課長"}});
    insertRow(database, u"Base02"_s, {{u"UnitNo", u"1000"}, {u"Unit", u"會計課"}});
    insertRow(database, u"Base05"_s, {{u"ClsNo", u"D01"}, {u"ClassName", u"日班"}});
    addRoster(database, u"10001"_s, {2001, 3, 5}, u"A"_s);
    addReadPunch(database, u"10001"_s, {2001, 3, 5}, QTime(8, 0));
}

/// The descriptors that the process holds on files of the folder.
int openFilesIn(const QString& folder) {
    int open = 0;
    const QDir descriptors(u"/proc/self/fd"_s);
    const auto names = descriptors.entryList(QDir::Files | QDir::System | QDir::NoDotAndDotDot);
    for (const QString& name : names)
        open += QFile::symLinkTarget(descriptors.filePath(name)).startsWith(folder);
    return open;
}

qsizetype liveObjects() {
    const auto widgets = QApplication::allWidgets();
    qsizetype count = widgets.size();
    for (const QWidget* widget : widgets)
        count += widget->findChildren<QObject*>(QString(), Qt::FindDirectChildrenOnly).size();
    return count + qApp->findChildren<QObject*>().size();
}

/// What is there after a hundred openings and closings that was not there before; what is made once and kept
/// does not count.
struct Growth {
    qsizetype objects;
    int files;
    double bytesOfEach; ///< Of the heap.

    Growth(const TestStore& store, const std::function<void()>& openAndClose) {
        // Qt's pictures of control shapes come and go by their own rules.
        QPixmapCache::setCacheLimit(0);
        const int filesBefore = openFilesIn(store.folder());
        const auto run = [&](int times) {
            for (int opening = 0; opening < times; ++opening) {
                openAndClose();
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                QCoreApplication::processEvents();
            }
        };
        run(Openings / 10);
        // A table that doubles once, and what the heap keeps at hand, are no leak: that shows in every
        // hundred.
        for (int round = 0; round < MostRounds; ++round) {
            const qsizetype objectsBefore = liveObjects();
            const auto bytesBefore = static_cast<double>(mallinfo2().uordblks);
            run(Openings);
            bytesOfEach = (static_cast<double>(mallinfo2().uordblks) - bytesBefore) / Openings;
            objects = liveObjects() - objectsBefore;
            if (objects != 0 || bytesOfEach < LeastBytes)
                break;
        }
        files = openFilesIn(store.folder()) - filesBefore;
    }

    [[nodiscard]] QString told() const {
        return u"%1 objects, %2 open files, %3 bytes each time"_s.arg(objects).arg(files).arg(bytesOfEach);
    }
    [[nodiscard]] bool isNone() const {
        return objects == 0 && files == 0 && (HeapIsWatched || bytesOfEach < LeastBytes);
    }
};

} // namespace

/// Every window and dialog of the program, those to come included: what must hold in all of them.
class EveryWindowTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void windowsAreWithoutFault_data();
    void windowsAreWithoutFault();
    void savingComesAheadOfCancelling_data() { addEveryWindow(); }
    void savingComesAheadOfCancelling();
    void dialogsAreWithoutFault_data() { addEveryDialog(); }
    void dialogsAreWithoutFault();
    void growthIsSeen();
    void aHundredOpeningsOfAWindowLeaveNothing_data() { addEveryWindow(); }
    void aHundredOpeningsOfAWindowLeaveNothing();
    void aHundredOpeningsOfADialogLeaveNothing_data() { addEveryDialog(); }
    void aHundredOpeningsOfADialogLeaveNothing();
};

void EveryWindowTest::windowsAreWithoutFault_data() {
    QTest::addColumn<std::size_t>("window");
    QTest::addColumn<bool>("withRows");
    registerWindows();
    const auto windows = everyWindow();
    for (std::size_t window = 0; window < windows.size(); ++window) {
        QTest::addRow("%s", qPrintable(windows.at(window).title)) << window << true;
        QTest::addRow("%s, empty", qPrintable(windows.at(window).title)) << window << false;
    }
}

void EveryWindowTest::windowsAreWithoutFault() {
    QFETCH(const std::size_t, window);
    QFETCH(const bool, withRows);
    Walk walk(withRows ? fillWithDemo : [](TestStore&) {});
    Window& form = walk.open(window);
    Findings findings;
    inEveryState(
        form, [&](const QString& place, bool /*isEdit*/) { findings.look(form, place); }, &walk.answers);
    QVERIFY2(findings.told().isEmpty(), qPrintable(findings.told()));
    QCOMPARE(walk.answers.trouble(), QString());
}

/// Pressing on from box to box ends on "存檔", with nothing else on the way.
void EveryWindowTest::savingComesAheadOfCancelling() {
    QFETCH(const std::size_t, window);
    Walk walk;
    Window& form = walk.open(window);
    int bars = 0;
    inEveryState(form, [&](const QString& place, bool isEdit) {
        if (!isEdit)
            return;
        ++bars;
        QPushButton* save = nullptr;
        for (auto* button : form.findChildren<QPushButton*>())
            save = button->text() == u"存檔" && button->isVisible() ? button : save;
        QVERIFY2(save, qPrintable(place));
        QStringList way = fromFirstBoxToButton(form, *save);
        way.removeAll(u"box"_s);
        QCOMPARE(place + u' ' + way.join(u' '), place + u" 存檔"_s);
    });
    const QMap<QString, int> expected{{u"Form1"_s, 6}, {u"Form4"_s, 6},  {u"Form5"_s, 4},
                                      {u"Form6"_s, 2}, {u"FrmPsw"_s, 1}, {u"FrmSysSet"_s, 1}};
    QVERIFY(bars >= expected.value(form.objectName()));
}

void EveryWindowTest::dialogsAreWithoutFault() {
    QFETCH(const std::size_t, dialog);
    Walk walk;
    Findings findings;
    walk.show(dialog, [&findings](QWidget& shown) { findings.look(shown, shown.objectName()); });
    QCOMPARE(findings.places(), 1);
    QVERIFY2(findings.told().isEmpty(), qPrintable(findings.told()));
    QCOMPARE(walk.answers.trouble(), QString());
}

void EveryWindowTest::growthIsSeen() {
    const TestStore store;
    const Growth none(store, [] {});
    QVERIFY2(none.isNone(), qPrintable(none.told()));

    std::vector<std::unique_ptr<QWidget>> windows;
    const Growth left(store, [&] { windows.push_back(std::make_unique<QWidget>()); });
    QCOMPARE(left.objects, Openings);
    QVERIFY2(HeapIsWatched || left.bytesOfEach > LeastBytes, qPrintable(left.told()));
    QVERIFY(!left.isNone());

    std::vector<std::unique_ptr<Database>> connections;
    const Growth open(store, [&] {
        if (connections.size() < Openings)
            connections.push_back(store.connect());
    });
    QVERIFY2(open.files >= Openings, qPrintable(open.told()));
}

void EveryWindowTest::aHundredOpeningsOfAWindowLeaveNothing() {
    QFETCH(const std::size_t, window);
    TestStore store;
    fill(store.database());
    const Shell shell(store);
    const EveryWindow each = everyWindow().at(window);
    const Growth growth(store, [&] {
        each.open();
        onEveryPage(*each.opened(), {}, [](const QString&) {});
        each.opened()->unload();
        if (moduleWindow(8))
            moduleWindow(8)->unload();
        if (each.title == u"Form7"_s)
            CloseDB(); // Which the reports leave open, as is meant.
    });
    QVERIFY2(growth.isNone(), qPrintable(growth.told()));
    QVERIFY(!gDbOpen);
}

void EveryWindowTest::aHundredOpeningsOfADialogLeaveNothing() {
    QFETCH(const std::size_t, dialog);
    TestStore store;
    fill(store.database());
    const Shell shell(store);
    const EveryDialog each = everyDialog().at(dialog);
    const Growth growth(store, [&] {
        PromptAnswers answers; // It keeps a picture of each dialog, and so goes each time.
        answers.expect(each.objectName, closeDialog);
        each.show();
        CloseDB(); // Deliberate: lookups leave it open until a window is unloaded.
    });
    QVERIFY2(growth.isNone(), qPrintable(growth.told()));
    QVERIFY(!gDbOpen);
}

int main(int argc, char** argv) {
    return runTests<EveryWindowTest>(argc, argv);
}

#include "EveryWindowTest.moc"
