#include "support/Contrast.h"

#include "app/controls/StatusBar.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QCheckBox>
#include <QColor>
#include <QComboBox>
#include <QGroupBox>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QStyleOptionGroupBox>
#include <QTabBar>
#include <QTableView>

#include <algorithm>
#include <cmath>

namespace pontrel::test {

namespace {

constexpr int BoxFrame = 4; ///< Pixels of a box around its text.
constexpr int TabFrame = 5; ///< And of a tab.

double luminance(QRgb color) {
    const auto part = [](int value) {
        const double share = value / 255.0;
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(qRed(color)) + 0.7152 * part(qGreen(color)) + 0.0722 * part(qBlue(color));
}

double contrast(QRgb one, QRgb other) {
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

QString textOf(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return label->text();
    if (const auto* box = qobject_cast<const QLineEdit*>(&widget))
        return box->displayText();
    if (const auto* list = qobject_cast<const QComboBox*>(&widget); list && !list->isEditable())
        return list->currentText();
    if (qobject_cast<const QCheckBox*>(&widget) || qobject_cast<const QRadioButton*>(&widget))
        return static_cast<const QAbstractButton&>(widget).text();
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget))
        return group->title();
    return {};
}

QRect placeOf(const QWidget& widget) {
    const QStyle& style = *widget.style();
    const QRect whole = widget.rect();
    if (qobject_cast<const QCheckBox*>(&widget) || qobject_cast<const QRadioButton*>(&widget)) {
        const bool isRadio = qobject_cast<const QRadioButton*>(&widget);
        QStyleOptionButton option;
        option.initFrom(&widget);
        return style.subElementRect(isRadio ? QStyle::SE_RadioButtonContents : QStyle::SE_CheckBoxContents,
                                    &option, &widget);
    }
    if (const auto* list = qobject_cast<const QComboBox*>(&widget)) {
        QStyleOptionComboBox option;
        option.initFrom(&widget);
        option.currentText = list->currentText();
        return style.subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &widget)
            .adjusted(1, 1, -1, -1);
    }
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) {
        QStyleOptionGroupBox option;
        option.initFrom(&widget);
        option.text = group->title();
        option.subControls = QStyle::SC_GroupBoxFrame | QStyle::SC_GroupBoxLabel;
        return style.subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxLabel, &widget);
    }
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return label->contentsRect();
    return whole.adjusted(BoxFrame, BoxFrame, -BoxFrame, -BoxFrame);
}

/// What a view or a list that drops down is made of is not the window's.
bool isPart(const QWidget& widget) {
    for (const QWidget* around = widget.parentWidget(); around; around = around->parentWidget()) {
        if (qobject_cast<const QAbstractItemView*>(around))
            return true;
    }
    return false;
}

/// A text of nothing but blanks and signs has too few points to tell its colour by.
bool isRead(const QString& text) {
    return std::any_of(text.begin(), text.end(), [](QChar each) { return each.isLetterOrNumber(); });
}

} // namespace

QList<ShownText> shownTexts(QWidget& window) {
    QList<ShownText> texts;
    const auto add = [&](const QWidget& widget, const QString& text, const QRect& place) {
        const QRect inWindow(widget.mapTo(&window, place.topLeft()), place.size());
        texts << ShownText{widget.objectName(), text, inWindow, widget.isEnabled()};
    };
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->window() != window.window() || isPart(*widget))
            continue;
        // A key of the keyboard that is off.
        if (qobject_cast<const StatusPanel*>(widget) && !widget->isEnabled())
            continue;
        if (const QString text = textOf(*widget); isRead(text))
            add(*widget, text, placeOf(*widget));
        const auto* bar = qobject_cast<const QTabBar*>(widget);
        for (int tab = 0; bar && tab < bar->count(); ++tab)
            add(*bar, bar->tabText(tab),
                bar->tabRect(tab).adjusted(TabFrame, TabFrame, -TabFrame, -TabFrame));
    }
    return texts;
}

QList<ShownText> buttonsAndRows(QWidget& window) {
    QList<ShownText> texts;
    const auto add = [&](const QWidget& widget, const QString& text, const QRect& place) {
        const QRect inWindow(widget.mapTo(&window, place.topLeft()), place.size());
        texts << ShownText{widget.objectName(), text, inWindow, true};
    };
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        if (button->isVisible() && button->isEnabled() && isRead(button->text()))
            add(*button, button->text(), button->rect().adjusted(BoxFrame, BoxFrame, -BoxFrame, -BoxFrame));
    }
    for (const QTableView* grid : window.findChildren<QTableView*>()) {
        const QAbstractItemModel* model = grid->model();
        for (int row = 0; grid->isVisible() && model && row < model->rowCount(); ++row) {
            for (int column = 0; column < model->columnCount(); ++column) {
                const QModelIndex cell = model->index(row, column);
                const QRect place = grid->visualRect(cell) & grid->viewport()->rect();
                const QString text = cell.data().toString();
                const bool isWhole = place.size() == grid->visualRect(cell).size();
                if (isWhole && isRead(text))
                    add(*grid->viewport(), text, place.adjusted(2, 2, -2, -2));
            }
        }
    }
    return texts;
}

double contrastIn(const QImage& picture, const QRect& place) {
    const QRect seen = place & picture.rect();
    QHash<QRgb, int> points;
    for (int y = seen.top(); y <= seen.bottom(); ++y) {
        for (int x = seen.left(); x <= seen.right(); ++x)
            ++points[picture.pixel(x, y)];
    }
    const QList<QRgb> colors = points.keys();
    if (colors.isEmpty())
        return 1;
    const QRgb ground = *std::max_element(colors.begin(), colors.end(),
                                          [&](QRgb one, QRgb other) { return points[one] < points[other]; });
    double most = 1;
    for (const QRgb color : colors)
        most = std::max(most, contrast(ground, color));
    return most;
}

} // namespace pontrel::test
