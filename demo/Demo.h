#pragma once

#include "store/Database.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace pontrel {

/// A text file of punches as the reader application leaves it, named yyyymmdd.txt.
struct DemoPunchFile {
    QString name;
    QByteArray content;
};

/// The punches of the example organisation, one file for each of the ten working days from 2010/03/01 to
/// 2010/03/12. The same at every call.
[[nodiscard]] std::vector<DemoPunchFile> demoPunchFiles();

/// Writes these files into the folder punch below the given one, which must exist. A file that is there
/// already stays as it is; a file stands there whole or not at all. Throws RunTimeError.
void writeDemoPunchFiles(const QString& folder);

/// Fills a new store with the example organisation: codes, time slots, shift classes, 42 employees, their
/// roster from 2010/03/01 to 2010/03/14, leave, write-offs and overtime; and writes its punch files. The same
/// at every call. Throws RunTimeError.
void createDemo(Database& database, const QString& folder);

} // namespace pontrel
