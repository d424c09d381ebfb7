#include "app/controls/TDBCalendarModel.h"

#include "rules/Calendar.h"
#include "store/Clock.h"

namespace pontrel {

using namespace Qt::StringLiterals;

TDBCalendarModel::TDBCalendarModel(QObject* parent) : QAbstractTableModel(parent) {}

void TDBCalendarModel::setMonth(int year, int month) {
    beginResetModel();
    first_ = QDate(year, month, 1);
    endResetModel();
}

void TDBCalendarModel::setGroup(const std::set<QDate>* days, const QString& description) {
    group_ = days;
    description_ = description;
    Q_EMIT dataChanged(index(0, 0), index(Weeks - 1, DaysOfWeek - 1));
}

QDate TDBCalendarModel::dayAt(const QModelIndex& index) const {
    if (!index.isValid() || !first_.isValid())
        return {};
    const QDate day = first_.addDays(index.row() * DaysOfWeek + index.column() - placeInWeek(first_));
    return day.month() == first_.month() ? day : QDate();
}

QModelIndex TDBCalendarModel::placeOf(QDate day) const {
    if (!day.isValid() || day.year() != first_.year() || day.month() != first_.month())
        return {};
    const int place = placeInWeek(first_) + day.day() - 1;
    return index(place / DaysOfWeek, place % DaysOfWeek);
}

bool TDBCalendarModel::isInGroup(QDate day) const {
    return group_ && group_->contains(day);
}

QString TDBCalendarModel::spokenDay(QDate day) const {
    QString text = u"%1年%2月%3日 星期%4"_s.arg(day.year()).arg(day.month()).arg(day.day()).arg(weekday(day));
    if (isInGroup(day))
        text += u' ' + description_;
    if (day == clock::today())
        text += u" 今天"_s;
    return text;
}

int TDBCalendarModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Weeks;
}

int TDBCalendarModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : DaysOfWeek;
}

QVariant TDBCalendarModel::data(const QModelIndex& index, int role) const {
    const QDate day = dayAt(index);
    if (!day.isValid())
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return QString::number(day.day());
    case Qt::AccessibleTextRole:
    case Qt::ToolTipRole:
        return spokenDay(day);
    case InGroupRole:
        return isInGroup(day);
    case TodayRole:
        return day == clock::today();
    default:
        return {};
    }
}

QVariant TDBCalendarModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::DisplayRole)
        return QString(weekday(section));
    if (role == Qt::AccessibleTextRole)
        return u"星期"_s + weekday(section);
    return {};
}

Qt::ItemFlags TDBCalendarModel::flags(const QModelIndex& index) const {
    return dayAt(index).isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}

} // namespace pontrel
