#pragma once

#include "store/DataSource.h"
#include "windows/master/Form1Pages.h"

#include <QAbstractItemView>
#include <QMap>

namespace pontrel::test {

/// The name of a control of an array.
[[nodiscard]] inline QString named(const QString& array, int index) {
    return QStringLiteral("%1(%2)").arg(array).arg(index);
}

/// The master data open on the time slots.
class SlotFixture : public PlainPageFixture {
  public:
    SlotFixture() : PlainPageFixture(3) {}

    [[nodiscard]] int optionShown() const {
        for (int index = 0; index < 5; ++index) {
            if (at<QRadioButton>(named(QStringLiteral("OptCT"), index)).isChecked())
                return index;
        }
        return -1;
    }
    [[nodiscard]] QString entryShown() const { return list().currentText(); }
    [[nodiscard]] QComboBox& list() const { return at<QComboBox>(QStringLiteral("Combo1")); }
    [[nodiscard]] TDBTime& time(int index) const {
        return at<TDBTime>(named(QStringLiteral("TDBTime1"), index));
    }
    /// Makes the next row current as the source itself does, without a button.
    void moveSource() const { form().findChild<DataSource*>(QStringLiteral("Data1(3)"))->MoveNext(); }
    /// Opens the list with a click and clicks the entry.
    void choose(int entry) {
        list().showPopup();
        QAbstractItemView* view = list().view();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                          view->visualRect(view->model()->index(entry, 0)).center());
    }
    /// What every control of the tab shows, by name.
    [[nodiscard]] QMap<QString, QString> everything() const {
        QMap<QString, QString> shown;
        const QWidget& frame = at(QStringLiteral("Frame1(3)"));
        for (const auto* box : frame.findChildren<QLineEdit*>())
            shown[box->objectName()] = box->text();
        for (const auto* mark : frame.findChildren<QAbstractButton*>())
            shown[mark->objectName()] = mark->isChecked() ? QStringLiteral("on") : QStringLiteral("off");
        shown[QStringLiteral("Combo1")] = list().currentText();
        return shown;
    }
    /// The names of those that show something else than they did.
    [[nodiscard]] QStringList changedSince(const QMap<QString, QString>& before) const {
        QStringList names;
        const QMap<QString, QString> now = everything();
        for (auto each = now.begin(); each != now.end(); ++each) {
            if (before.value(each.key()) != each.value())
                names += each.key();
        }
        return names;
    }
    /// Begins a new row with code A.
    void begin() {
        openPage();
        pressButton(0);
        type(QStringLiteral("Text4(0)"), QStringLiteral("A"));
    }
    void typeTime(int index, const QString& digits) {
        time(index).setFocus();
        time(index).selectAll();
        QTest::keyClicks(&time(index), digits);
    }
    [[nodiscard]] static QString rowOfA(Fields fields) {
        fields.prepend({u"TimeNo", QStringLiteral("A")});
        return expectedRow(QStringLiteral("Base04"), fields);
    }
};

} // namespace pontrel::test
