#include "support/AppSupport.h"

#include "app/controls/LongTexts.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSet>
#include <QStackedWidget>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>

#include <algorithm>

namespace pontrel::test {

using namespace Qt::StringLiterals;

namespace {

constexpr int ButtonMargin = 6; ///< What a caption needs beside itself within a button.
constexpr int HeaderMargin = 4; ///< And within the head of a column.
constexpr int MostStops = 300;  ///< More controls than any window has.

QString describeWidget(const QWidget& widget) {
    return u"%1 \"%2\""_s.arg(QString::fromLatin1(widget.metaObject()->className()), widget.objectName());
}

/// A part that Qt has put into a window or control.
bool isQtPart(const QWidget& widget) {
    return widget.objectName().startsWith(u"qt_");
}

bool takesFocusByTab(const QWidget& widget) {
    return (widget.focusPolicy() & Qt::TabFocus) == Qt::TabFocus && widget.isEnabled() &&
           !widget.focusProxy();
}

/// Whether a user sees one control in it, whatever Qt has made it of.
bool isWhole(const QWidget& widget) {
    return qobject_cast<const QLabel*>(&widget) || qobject_cast<const QAbstractButton*>(&widget) ||
           qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QComboBox*>(&widget) ||
           qobject_cast<const QAbstractScrollArea*>(&widget) || qobject_cast<const QTabBar*>(&widget);
}

/// A part of a control that a user sees as one, or of what comes up from it.
bool isWithinWhole(const QWidget& widget) {
    for (const QWidget* around = widget.parentWidget(); around; around = around->parentWidget()) {
        if (isWhole(*around))
            return true;
    }
    return false;
}

/// One that a user works with.
bool isForUse(const QWidget& widget) {
    return isWhole(widget) && (!qobject_cast<const QLabel*>(&widget) || widget.focusPolicy() != Qt::NoFocus);
}

/// What lies directly in a widget, as a user sees it: of tabs and stacks the page in front alone.
QList<QWidget*> partsOf(const QWidget& widget) {
    if (isWhole(widget))
        return {};
    if (const auto* tabs = qobject_cast<const QTabWidget*>(&widget))
        return {tabs->tabBar(), tabs->currentWidget()};
    if (const auto* stack = qobject_cast<const QStackedWidget*>(&widget))
        return {stack->currentWidget()};
    QList<QWidget*> parts;
    for (QObject* child : widget.children()) {
        auto* part = qobject_cast<QWidget*>(child);
        if (part && !part->isWindow())
            parts << part;
    }
    return parts;
}

/// All widgets in a window down to its whole controls, those on screen.
QList<QWidget*> shownIn(const QWidget& widget) {
    QList<QWidget*> shown;
    for (QWidget* part : partsOf(widget)) {
        if (part && part->isVisible())
            shown << part << shownIn(*part);
    }
    return shown;
}

QString withoutAccessKey(const QString& caption) {
    return QString(caption).remove(u'&');
}

int widthOf(const QWidget& widget, const QString& caption) {
    return widget.fontMetrics().horizontalAdvance(withoutAccessKey(caption));
}

bool isLabelCut(const QLabel& label) {
    if (label.text().isEmpty() || qobject_cast<const LongLabel*>(&label)) // which shows what it can
        return false;
    if (label.wordWrap())
        return label.heightForWidth(label.width()) > label.height();
    return label.sizeHint().width() > label.width() || label.fontMetrics().height() > label.height();
}

bool isButtonCut(const QAbstractButton& button) {
    if (button.text().isEmpty())
        return false;
    const bool isRadio = qobject_cast<const QRadioButton*>(&button);
    if (isRadio || qobject_cast<const QCheckBox*>(&button)) {
        QStyleOptionButton option;
        option.initFrom(&button);
        const auto place = isRadio ? QStyle::SE_RadioButtonContents : QStyle::SE_CheckBoxContents;
        const QRect room = button.style()->subElementRect(place, &option, &button);
        return room.width() < widthOf(button, button.text());
    }
    const int picture = button.icon().isNull() ? 0 : button.iconSize().width();
    return button.width() < widthOf(button, button.text()) + picture + ButtonMargin ||
           button.height() < button.fontMetrics().height();
}

/// The captions of a control that have not room enough.
QStringList cutCaptions(const QWidget& widget) {
    QStringList cut;
    if (const auto* label = qobject_cast<const QLabel*>(&widget); label && isLabelCut(*label))
        cut << label->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget); button && isButtonCut(*button))
        cut << button->text();
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget);
        group && widthOf(*group, group->title()) > group->width())
        cut << group->title();
    if (const auto* bar = qobject_cast<const QTabBar*>(&widget)) {
        for (int tab = 0; tab < bar->count(); ++tab) {
            if (!bar->rect().contains(bar->tabRect(tab)) ||
                bar->tabRect(tab).width() < widthOf(*bar, bar->tabText(tab)) + ButtonMargin)
                cut << bar->tabText(tab);
        }
    }
    const auto* table = qobject_cast<const QTableView*>(&widget);
    if (table && table->model() && table->horizontalHeader()->isVisible()) {
        for (int column = 0; column < table->model()->columnCount(); ++column) {
            const QString caption = table->model()->headerData(column, Qt::Horizontal).toString();
            if (table->columnWidth(column) < widthOf(*table->horizontalHeader(), caption) + HeaderMargin)
                cut << caption;
        }
    }
    return cut;
}

/// Windows within the main window lie upon each other, and there Enter does what a dialog of Qt
/// leads one to expect.
bool isWindowWithin(const QWidget& widget) {
    return widget.windowType() == Qt::SubWindow;
}

bool takesEnter(const QWidget& window) {
    return qobject_cast<const QMessageBox*>(&window) || qobject_cast<const QInputDialog*>(&window);
}

QStringList namingFaults(const QWidget& window, const QWidget& control) {
    QStringList faults;
    if (isForUse(control) && !isQtPart(control)) {
        if (control.objectName().isEmpty())
            faults << u"%1 has no object name"_s.arg(describeWidget(control));
        if (control.accessibleName().isEmpty())
            faults << u"%1 has no accessible name"_s.arg(describeWidget(control));
    }
    if (const auto* button = qobject_cast<const QPushButton*>(&control);
        button && !takesEnter(window) && (button->autoDefault() || button->isDefault()))
        faults << u"%1 is pressed by Enter from elsewhere"_s.arg(describeWidget(control));
    const auto* label = qobject_cast<const QLabel*>(&control);
    if (label && !label->buddy()) {
        const QString text = label->text().trimmed();
        if (text.contains(u'&') && label->textFormat() != Qt::PlainText)
            faults << u"%1 has an access key but no buddy"_s.arg(describeWidget(control));
        else if (text.endsWith(u':') || text.endsWith(QChar(0xff1a)))
            faults << u"%1 \"%2\" leads to nothing"_s.arg(describeWidget(control), text);
    }
    return faults;
}

QStringList placeFaults(const QWidget& control) {
    QStringList faults;
    for (const QString& caption : cutCaptions(control))
        faults << u"%1 cuts \"%2\""_s.arg(describeWidget(control), caption);
    const QWidget& parent = *control.parentWidget();
    if (!isQtPart(control) && !isWindowWithin(control) && !parent.rect().contains(control.geometry()))
        faults << u"%1 reaches out of its place"_s.arg(describeWidget(control));
    return faults;
}

/// Widgets beside each other in one place that cover each other.
QStringList overlaps(const QList<QWidget*>& shown) {
    QStringList faults;
    for (qsizetype one = 0; one < shown.size(); ++one) {
        for (qsizetype other = one + 1; other < shown.size(); ++other) {
            const QWidget& first = *shown.at(one);
            const QWidget& second = *shown.at(other);
            if (first.parentWidget() == second.parentWidget() && !isQtPart(first) && !isQtPart(second) &&
                !isWindowWithin(first) && !isWindowWithin(second) &&
                first.geometry().intersects(second.geometry()))
                faults << u"%1 and %2 overlap"_s.arg(describeWidget(first), describeWidget(second));
        }
    }
    return faults;
}

/// Names that two controls of a window bear, on whatever pages.
QStringList doubleNames(const QWidget& window) {
    QStringList faults;
    QSet<QString> names;
    for (const QWidget* each : window.findChildren<QWidget*>()) {
        const QString name = each->objectName();
        if (!isForUse(*each) || name.isEmpty() || isQtPart(*each) || isWithinWhole(*each))
            continue;
        if (names.contains(name))
            faults << u"%1 is not the only one of its name"_s.arg(describeWidget(*each));
        names.insert(name);
    }
    return faults;
}

/// Of radio buttons in one place Tab reaches one; it stands for all of them.
bool isReached(const QWidget& control, const QSet<const QWidget*>& reached) {
    if (reached.contains(&control))
        return true;
    if (!qobject_cast<const QRadioButton*>(&control))
        return false;
    const auto others = control.parentWidget()->findChildren<QRadioButton*>(Qt::FindDirectChildrenOnly);
    return std::any_of(others.begin(), others.end(),
                       [&](const QRadioButton* other) { return reached.contains(other); });
}

} // namespace

QStringList controlFaults(QWidget& window) {
    QStringList faults;
    if (window.accessibleName().isEmpty())
        faults << u"%1 has no accessible name"_s.arg(describeWidget(window));
    const QList<QWidget*> shown = shownIn(window);
    for (const QWidget* control : shown)
        faults << namingFaults(window, *control) << placeFaults(*control);
    return faults << overlaps(shown) << doubleNames(window);
}

QStringList tabFaults(QWidget& window) {
    QSet<const QWidget*> reached;
    QWidget& keyboard = *window.window();
    for (int stop = 0; stop < MostStops; ++stop) {
        QTest::keyClick(keyboard.windowHandle(), Qt::Key_Tab);
        const QWidget* focus = keyboard.focusWidget();
        if (reached.contains(focus))
            break; // round, or it goes no further
        reached.insert(focus);
    }
    QStringList faults;
    for (const QWidget* control : shownIn(window)) {
        if (isForUse(*control) && takesFocusByTab(*control) && !isReached(*control, reached))
            faults << u"%1 is not in the tab order"_s.arg(describeWidget(*control));
    }
    return faults;
}

QStringList gridsOutOfSight(const QWidget& window) {
    QStringList wide;
    for (const QTableView* grid : window.findChildren<QTableView*>()) {
        if (grid->isVisible() && grid->horizontalHeader()->length() > grid->viewport()->width())
            wide << grid->objectName();
    }
    return wide;
}

} // namespace pontrel::test
