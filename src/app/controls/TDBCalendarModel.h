#pragma once

#include <QAbstractTableModel>
#include <QDate>

#include <set>

namespace pontrel {

/// The days of one month as six weeks of seven days from Sunday, with the days of one group marked. The
/// places before the first and after the last day are empty.
class TDBCalendarModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    static constexpr int Weeks = 6;
    /// Whether a place's day is in the group shown, and whether it is today.
    enum Role { InGroupRole = Qt::UserRole, TodayRole };

    explicit TDBCalendarModel(QObject* parent);

    void setMonth(int year, int month);
    /// The days marked, and what a marked day is called; the set must outlive its use here. Null marks none.
    void setGroup(const std::set<QDate>* days, const QString& description);

    [[nodiscard]] QDate dayAt(const QModelIndex& index) const; ///< Invalid in an empty place.
    [[nodiscard]] QModelIndex placeOf(QDate day) const;        ///< Invalid for a day of another month.

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

  private:
    [[nodiscard]] bool isInGroup(QDate day) const;
    [[nodiscard]] QString spokenDay(QDate day) const;

    QDate first_; ///< Of the month.
    const std::set<QDate>* group_ = nullptr;
    QString description_;
};

} // namespace pontrel
