#include "app/controls/TDBDate.h"
#include "app/controls/TDBGrid.h"
#include "support/Builders.h"
#include "support/Patience.h"
#include "windows/Walk.h"

#include <QComboBox>
#include <QHelpEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStyleOptionComboBox>
#include <QTextDocumentFragment>
#include <QToolTip>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

constexpr int Longest = 70; ///< In characters, more than any column that has a limit takes.
constexpr int Frame = 4;    ///< Pixels of a box that are not its text's.

const QChar Wide(0x570b);
const QChar GoesOn(0x2026);

/// The box with nothing but a text, so wide that all of it shows.
QImage paintedWhole(const QLineEdit& like, const QString& text) {
    QWidget ground;
    ground.setPalette(like.palette());
    QLineEdit box(&ground);
    box.setFrame(like.hasFrame());
    box.setEnabled(like.isEnabled());
    box.setReadOnly(like.isReadOnly());
    box.setText(text);
    box.home(false);
    box.resize(like.width() + (Longest + 1) * box.fontMetrics().horizontalAdvance(Wide), like.height());
    return box.grab().toImage();
}

/// Whether a column of points holds more than the ground.
bool isWritten(const QImage& picture, int x, QRgb ground) {
    for (int y = Frame; y < picture.height() - Frame; ++y) {
        if (picture.pixel(x, y) != ground)
            return true;
    }
    return false;
}

/// Whether the box looks as it does with that text, and the text ends before the box does.
bool shows(const QLineEdit& box, const QImage& picture, const QString& text) {
    const QImage whole = paintedWhole(box, text);
    const int end = picture.width() - Frame;
    const QRgb ground = whole.pixel(whole.width() - 2 * Frame, whole.height() / 2);
    for (int x = end; x < whole.width() - Frame; ++x) {
        if (isWritten(whole, x, ground))
            return false;
    }
    const QRect seen(Frame, Frame, end - Frame, picture.height() - 2 * Frame);
    return picture.copy(seen) == whole.copy(seen);
}

/// How much of the text the box shows from its beginning: all, or with the mark behind it; nothing where the
/// beginning is out of sight.
std::optional<qsizetype> lettersShown(QLineEdit& box, const QString& text) {
    const QImage picture = box.grab().toImage();
    if (shows(box, picture, text))
        return text.size();
    for (qsizetype length = 1; length < text.size(); ++length) {
        if (shows(box, picture, text.left(length) + GoesOn))
            return length;
    }
    return std::nullopt;
}

QString nameOf(const QLineEdit& box) {
    const auto* list = qobject_cast<const QComboBox*>(box.parentWidget());
    return list ? list->objectName() : box.objectName();
}

/// The tooltip that the mouse, resting on the middle of a widget, brings up.
QString toolTipOf(QWidget& widget) {
    QToolTip::hideText();
    QHelpEvent asked(QEvent::ToolTip, widget.rect().center(), widget.mapToGlobal(widget.rect().center()));
    QApplication::sendEvent(&widget, &asked);
    return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
}

/// The same over an entry of a list; nothing where none comes up.
QString toolTipAt(QAbstractItemView& view, const QModelIndex& entry) {
    QToolTip::hideText();
    (void)QTest::qWaitFor([] { return !QToolTip::isVisible(); }, PatienceMs);
    const QPoint place = view.visualRect(entry).intersected(view.viewport()->rect()).center();
    QHelpEvent asked(QEvent::ToolTip, place, view.viewport()->mapToGlobal(place));
    QApplication::sendEvent(view.viewport(), &asked);
    return QToolTip::isVisible() ? QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText()
                                 : QString();
}

/// Fills the boxes of windows and tells of those that do not show what they hold.
class Filling {
  public:
    void fill(QWidget& window, const QString& place) {
        QCoreApplication::processEvents();
        for (auto* button : window.findChildren<QPushButton*>()) {
            if (button->isVisible() && button->isEnabled())
                button->setFocus();
        }
        for (auto* box : window.findChildren<QLineEdit*>()) {
            if (box->isVisible() && box->echoMode() == QLineEdit::Normal) // else it hides its text
                fill(*box, place);
        }
        for (const auto* list : window.findChildren<QComboBox*>()) {
            if (list->isVisible() && !list->isEditable())
                look(*list, place);
        }
    }
    /// The boxes that show no more than the beginning.
    [[nodiscard]] QStringList cut() const { return cut_.values(); }
    [[nodiscard]] QString faults() const { return faults_.join(u'\n'); }
    [[nodiscard]] int boxes() const { return boxes_; }

  private:
    void fill(QLineEdit& box, const QString& place) {
        ++boxes_;
        const QString before = box.text();
        box.clear();
        box.setModified(true); // as by hand: a row's own text may be longer
        box.insert(box.inputMask().isEmpty() ? QString(Longest, Wide) : QString(8, u'8'));
        const QString text = box.displayText();
        const QString fault = faultOf(box, text);
        if (!fault.isEmpty())
            faults_ << u"%1: %2 %3"_s.arg(place, nameOf(box), fault);
        box.setText(before);
    }
    QString faultOf(QLineEdit& box, const QString& text) {
        if (text.isEmpty())
            return u"takes nothing"_s;
        if (box.hasFocus())
            return u"has the keyboard"_s;
        const QImage picture = box.grab().toImage();
        if (shows(box, picture, text))
            return {};
        for (qsizetype length = 1; length < text.size(); ++length) {
            if (!shows(box, picture, text.left(length) + GoesOn))
                continue;
            cut_.insert(nameOf(box));
            return toolTipOf(box).section(u'\n', 0, 0) == text ? QString()
                                                               : u"has no tooltip with its text"_s;
        }
        return u"shows neither its text nor its beginning"_s;
    }
    void look(const QComboBox& list, const QString& place) {
        ++boxes_;
        QStyleOptionComboBox option;
        option.initFrom(&list);
        const QRect room =
            list.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &list);
        QStringList entries{qobject_cast<const TDBDate*>(&list) ? u"2000/00/00"_s : QString()};
        for (int entry = 0; entry < list.count(); ++entry)
            entries << list.itemText(entry);
        for (const QString& entry : entries) {
            if (list.fontMetrics().horizontalAdvance(entry) > room.width())
                faults_ << u"%1: %2 cuts \"%3\""_s.arg(place, list.objectName(), entry);
        }
    }

    int boxes_ = 0;
    QSet<QString> cut_;
    QStringList faults_;
};

QStringList sorted(QStringList names) {
    names.sort();
    return names;
}

} // namespace

/// Boxes and labels with the longest texts that they may hold.
class LongTextsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void boxesOfWindowsShowTheirLongestText_data();
    void boxesOfWindowsShowTheirLongestText();
    void boxesOfDialogsShowTheirLongestText_data() { addEveryDialog(); }
    void boxesOfDialogsShowTheirLongestText();
    void theBoxWithTheKeyboardShowsWhereItIsTyped();
    void theMouseBringsUpTheWholeTextOfADisabledBox();
    void aTooltipOfItsOwnFollowsTheText();
    void hiddenTextsStayHidden();
    void longNamesOfCodesMoveNothing();
    void entriesOfListsTellTheirWholeText();
    void cellsOfGridsTellTheirWholeText();
    void listsThatDropDownTellTheirWholeText();
};

void LongTextsTest::boxesOfWindowsShowTheirLongestText_data() {
    QTest::addColumn<std::size_t>("window");
    QTest::addColumn<QStringList>("cut");
    registerWindows();
    const auto boxes = [](const QString& array, const QList<int>& indexes) {
        QStringList names;
        for (const int index : indexes)
            names << u"%1(%2)"_s.arg(array).arg(index);
        return names;
    };
    // Boxes whose texts have no stated limit, numbers among them; of the others the address alone.
    const QMap<QString, QStringList> cut{
        {u"Form1"_s, boxes(u"Text4"_s, {1, 2, 3, 4, 5, 8, 9, 10}) +
                         boxes(u"Text5"_s, {3, 4, 6, 7, 9, 10, 12, 13, 15, 16, 18, 19}) +
                         boxes(u"Text6"_s, {8, 9, 10, 11, 12, 13, 14, 16, 23, 24, 25, 26})},
        {u"Form2"_s, boxes(u"Combo2"_s, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10})},
        {u"Form3"_s, {u"Text1"_s}},
        {u"Form4"_s, QStringList{u"Text4"_s, u"Text5"_s} + boxes(u"Text2"_s, {2, 3, 4}) +
                         boxes(u"Text3"_s, {3}) + boxes(u"Text8"_s, {0, 1})},
        {u"Form5"_s, {u"Text4"_s}},
        {u"Form6"_s, {u"Text1(4)"_s, u"Text1(5)"_s, u"Text8(1)"_s, u"Text5"_s, u"Text4"_s}},
        {u"Form7"_s, boxes(u"Combo1"_s, {0, 1, 2, 3, 4, 5, 6}) + boxes(u"Combo2"_s, {0, 1, 2, 3}) +
                         boxes(u"Combo3"_s, {0, 1, 2, 3, 4, 5}) + boxes(u"Combo4"_s, {0, 1, 2, 3, 4, 5}) +
                         boxes(u"Combo5"_s, {0, 1, 2, 3, 4}) + boxes(u"Combo6"_s, {0, 1, 2, 3, 4, 5})},
        {u"FrmPsw"_s, {u"text1(0)"_s}},
        {u"FrmSysSet"_s, boxes(u"Text1"_s, {0, 1, 2, 3, 4, 9})}};
    const auto windows = everyWindow();
    for (std::size_t window = 0; window < windows.size(); ++window) {
        const QString& title = windows.at(window).title;
        QTest::addRow("%s", qPrintable(title)) << window << cut.value(title);
    }
}

void LongTextsTest::boxesOfWindowsShowTheirLongestText() {
    QFETCH(const std::size_t, window);
    QFETCH(const QStringList, cut);
    Walk walk;
    Window& form = walk.open(window);
    Filling filling;
    inEveryState(form, [&](const QString& place, bool isEdit) {
        // Where rows can be edited, their boxes are filled in an edit, and one kind of edit is enough.
        if (place.endsWith(u"修改"_s) || place.contains(u"/修改/"_s) ||
            (!isEdit && !place.startsWith(u"Form1"_s)))
            filling.fill(form, place);
    });
    QVERIFY2(filling.faults().isEmpty(), qPrintable(filling.faults()));
    QCOMPARE(sorted(filling.cut()), sorted(cut));
    QCOMPARE(filling.boxes() > 0, form.objectName() != u"Form8"_s);
}

void LongTextsTest::boxesOfDialogsShowTheirLongestText() {
    QFETCH(const std::size_t, dialog);
    Walk walk;
    Filling filling;
    walk.show(dialog, [&filling](QWidget& shown) { filling.fill(shown, shown.objectName()); });
    QVERIFY2(filling.faults().isEmpty(), qPrintable(filling.faults()));
    QCOMPARE(walk.answers.trouble(), QString());
}

void LongTextsTest::theBoxWithTheKeyboardShowsWhereItIsTyped() {
    QWidget window;
    QLineEdit box(&window);
    box.setGeometry(10, 10, 100, 26);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window, PatienceMs));
    box.setFocus();
    const QString text = u"the beginning of it, and then the end"_s;
    QTest::keyClicks(&box, text);
    QCOMPARE(lettersShown(box, text), std::nullopt); // they went by
    box.clearFocus();
    const std::optional<qsizetype> letters = lettersShown(box, text);
    QVERIFY(letters && *letters > 5 && *letters < text.size());
}

void LongTextsTest::theMouseBringsUpTheWholeTextOfADisabledBox() {
    TestStore store;
    const QString address(60, Wide);
    addEmployee(store.database(), u"10001"_s, {{u"Address", address}});
    const Shell shell(store);
    OpenToolWindow(1);
    Window& form = *moduleWindow(1);
    control<QTabWidget>(form, u"SSTab1"_s).setCurrentIndex(5);
    control<QTabWidget>(form, u"SSTab2"_s).setCurrentIndex(2);
    auto& box = control<QLineEdit>(form, u"Text6(16)"_s);
    QVERIFY(!box.isEnabled());
    QToolTip::hideText();
    QWidget& main = *form.window();
    QTest::mouseMove(main.windowHandle(), box.mapTo(&main, QPoint(5, 5)));
    QTest::mouseMove(main.windowHandle(), box.mapTo(&main, QPoint(8, 8)));
    QTRY_VERIFY_WITH_TIMEOUT(QToolTip::isVisible(), PatienceMs);
    QCOMPARE(QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText(), address);
}

void LongTextsTest::aTooltipOfItsOwnFollowsTheText() {
    QLineEdit box;
    box.resize(60, 26);
    box.setToolTip(u"分鐘"_s);
    box.setText(u"短"_s);
    QCOMPARE(toolTipOf(box), u"分鐘"_s);
    box.setText(u"<b>"_s + QString(20, Wide));
    box.ensurePolished();
    QCOMPARE(toolTipOf(box), u"<b>"_s + QString(20, Wide) + u"\n分鐘"_s);
}

void LongTextsTest::hiddenTextsStayHidden() {
    QLineEdit box;
    box.resize(60, 26);
    box.setEchoMode(QLineEdit::Password);
    box.setText(QString(40, u'x'));
    box.ensurePolished();
    QCOMPARE(toolTipOf(box), QString());
}

void LongTextsTest::longNamesOfCodesMoveNothing() {
    TestStore store;
    const QString unit(30, Wide);
    insertRow(store.database(), u"Base02"_s, {{u"UnitNo", u"1000"}, {u"Unit", unit}});
    addEmployee(store.database(), u"10001"_s, {{u"UnitNo", u"1000"}});
    const Shell shell(store);
    OpenToolWindow(1);
    Window& form = *moduleWindow(1);
    control<QTabWidget>(form, u"SSTab1"_s).setCurrentIndex(5);
    QCoreApplication::processEvents();
    auto& name = control<QLabel>(form, u"Label12"_s);
    QCOMPARE(name.text(), unit);
    QVERIFY(name.width() > 0);
    QCOMPARE(toolTipOf(name), unit);
    QCOMPARE(controlFaults(form), QStringList());
    // The same as with the beginning alone and the mark behind it.
    const QImage picture = name.grab().toImage();
    const auto showsBeginning = [&](qsizetype length) {
        name.setText(unit.left(length) + GoesOn);
        return name.grab().toImage() == picture;
    };
    bool shown = false;
    for (qsizetype length = 1; length < unit.size() && !shown; ++length)
        shown = showsBeginning(length);
    QVERIFY(shown);
}

void LongTextsTest::entriesOfListsTellTheirWholeText() {
    QListWidget list;
    list.setToolTip(u"按住 Ctrl 鍵可選取多項"_s);
    list.addItems({QString(30, Wide), u"短"_s});
    list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list.resize(120, 100);
    list.show();
    QCOMPARE(toolTipAt(list, list.model()->index(0, 0)), QString(30, Wide) + u'\n' + list.toolTip());
    QCOMPARE(toolTipAt(list, list.model()->index(1, 0)), list.toolTip());
    list.item(0)->setToolTip(list.item(0)->text()); // as trees have it that tell their texts by themselves
    QCOMPARE(toolTipAt(list, list.model()->index(0, 0)), QString(30, Wide));
}

void LongTextsTest::cellsOfGridsTellTheirWholeText() {
    TestStore store;
    addEmployee(store.database(), u"10001"_s, {{u"EmpName", QString(12, Wide)}});
    addReadPunch(store.database(), u"10001"_s, {2001, 3, 5}, QTime(8, 0));
    const Shell shell(store);
    OpenToolWindow(3);
    auto& grid = control<TDBGrid>(*moduleWindow(3), u"TDBG1"_s);
    grid.setColumnWidth(1, 60);
    QCOMPARE(toolTipAt(grid, grid.model()->index(0, 1)), QString(12, Wide));
    QCOMPARE(toolTipAt(grid, grid.model()->index(0, 0)), QString());
    grid.setColumnWidth(1, 260);
    QCOMPARE(toolTipAt(grid, grid.model()->index(0, 1)), QString());
}

void LongTextsTest::listsThatDropDownTellTheirWholeText() {
    QComboBox list;
    list.addItems({QString(80, Wide), u"短"_s});
    list.setToolTip(u"彈性"_s);
    list.resize(100, 26);
    list.ensurePolished();
    QCOMPARE(toolTipOf(list), QString(80, Wide) + u"\n彈性"_s);
    list.setCurrentIndex(1);
    QCOMPARE(toolTipOf(list), u"彈性"_s);
    list.setCurrentIndex(0);
    list.show();
    list.showPopup(); // which grows with its entries as far as the screen allows
    QTRY_VERIFY_WITH_TIMEOUT(list.view()->isVisible(), PatienceMs);
    QCOMPARE(toolTipAt(*list.view(), list.model()->index(0, 0)), QString(80, Wide));
}

int main(int argc, char** argv) {
    return runTests<LongTextsTest>(argc, argv);
}

#include "LongTextsTest.moc"
