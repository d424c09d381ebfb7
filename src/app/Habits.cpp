#include "app/Habits.h"

#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <QStringList>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

const QString ZoomKey = u"zoom"_s;
constexpr qint64 MostBytes = 1'000'000; ///< Of a file; a larger one holds something else.
constexpr int LeastWidth = 20;
constexpr int MostWidth = 4000;

QString columnsKey(const QString& grid) {
    return u"columns/"_s + grid;
}

/// A file that can be read without waiting for anybody, or made.
bool isUsable(const QString& file) {
    const QFileInfo info(file);
    return !info.exists() || (info.isFile() && info.size() <= MostBytes);
}

} // namespace

Habits& Habits::ofUser() {
    static Habits habits;
    return habits;
}

QString Habits::userFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/pontrel/habits.ini"_s;
}

void Habits::keepIn(const QString& file) {
    leave();
    if (!isUsable(file))
        return;
    file_ = file;
    const QSettings settings(file, QSettings::IniFormat);
    for (const QString& key : settings.allKeys()) {
        if (const QString text = settings.value(key).toString(); !text.isEmpty())
            values_.insert(key, text);
    }
}

void Habits::leave() {
    values_.clear();
    file_.clear();
}

void Habits::setValue(const QString& key, const QString& text) {
    if (text == values_.value(key))
        return;
    if (text.isEmpty())
        values_.remove(key);
    else
        values_.insert(key, text);
    if (file_.isEmpty() || !isUsable(file_))
        return;
    QSettings settings(file_, QSettings::IniFormat); // writes a new file and renames it
    if (text.isEmpty())
        settings.remove(key);
    else
        settings.setValue(key, text);
    settings.sync();
}

int Habits::zoom() const {
    bool isNumber = false;
    const int percent = value(ZoomKey).toInt(&isNumber);
    return isNumber ? percent : FullSize;
}

void Habits::setZoom(int percent) {
    setValue(ZoomKey, QString::number(percent));
}

// One text such as "EmpNo:60 EmpName:90", in which names stand without blanks and colons.

QMap<QString, int> Habits::columnWidths(const QString& grid) const {
    QMap<QString, int> widths;
    for (const QString& each : value(columnsKey(grid)).split(u' ', Qt::SkipEmptyParts)) {
        bool isNumber = false;
        const int width = each.section(u':', 1).toInt(&isNumber);
        if (isNumber && width >= LeastWidth && width <= MostWidth)
            widths.insert(each.section(u':', 0, 0), width);
    }
    return widths;
}

void Habits::setColumnWidths(const QString& grid, const QMap<QString, int>& widths) {
    QStringList texts;
    for (auto each = widths.cbegin(); each != widths.cend(); ++each)
        texts << u"%1:%2"_s.arg(each.key()).arg(each.value());
    setValue(columnsKey(grid), texts.join(u' '));
}

} // namespace pontrel
