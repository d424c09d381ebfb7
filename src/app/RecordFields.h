#pragma once

#include <QString>

#include <initializer_list>

class QCheckBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QWidget;

namespace pontrel {

class DataSource;
struct DateFields;
class TDBTime;

/// Lets the user type no more than so many characters into the box, a rare one counting as one, and makes one
/// of a set width show as many. What code or a row puts there is taken whole in any case.
void limitEntry(QLineEdit& box, int characters, int width);

/// Pixels between fields that stand beside each other.
inline constexpr int FieldSpacing = 6;

/// The widgets beside each other, from the left on and no wider than they need.
[[nodiscard]] QHBoxLayout* fieldLine(std::initializer_list<QWidget*> parts);

/// Makes the fields of a record page's edit area: controls named and spoken, bound to the columns of one
/// table, with entries no longer than the column takes. They belong to the area; laying them out is the
/// caller's.
class RecordFields {
  public:
    /// The table's name is that of the store; source and area must outlive this.
    RecordFields(QWidget& area, DataSource& source, QString table);

    [[nodiscard]] const DataSource& source() const { return source_; }

    /// A box of that object name and spoken name, bound to the column. It is as wide as told, in pixels, or
    /// as the longest entry needs; a width of 0 lets it stretch.
    [[nodiscard]] QLineEdit* box(const QString& name, const QString& spokenName, const QString& column,
                                 int width = 0) const;
    /// A box that no column stands behind.
    [[nodiscard]] QLineEdit* freeBox(const QString& name, const QString& spokenName, int width = 0) const;
    /// A bound box that is never seen: it carries what other controls show and set.
    [[nodiscard]] QLineEdit* hiddenBox(const QString& name, const QString& column) const;
    [[nodiscard]] QCheckBox* check(const QString& name, const QString& caption, const QString& column) const;
    /// A time box, bound where a column is given.
    [[nodiscard]] TDBTime* time(const QString& name, const QString& spokenName, const QString& column) const;
    /// The two controls of a date pair; the date control alone is bound, where a column is given.
    [[nodiscard]] DateFields date(const QString& maskName, const QString& dateName, const QString& spokenName,
                                  const QString& column) const;

    /// A label whose text the user only reads. With a column it is bound, and filled after the boxes, since
    /// code derives such labels from them.
    [[nodiscard]] QLabel* shown(const QString& name, const QString& column = {}) const;
    /// The caption of a field, which is its buddy; null for the caption of several.
    QLabel* caption(const QString& text, QWidget* buddy = nullptr) const;

  private:
    QWidget& area_;
    DataSource& source_;
    QString table_;
};

} // namespace pontrel
