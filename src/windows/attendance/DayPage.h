#pragma once

#include "rules/attendance/DayAccount.h"

#include <QPageLayout>
#include <QSizeF>
#include <QString>

#include <functional>

class QPainter;
class QPrinter;

namespace pontrel {

/// Paints an account on pages of that size, in 1/96 inch, margins included: its title, the picture of the
/// day, the sentences. A further page is asked for where one is full; false ends it. Returns the pages.
int paintDayPages(QPainter& painter, const QSizeF& page, const DayAccount& account,
                  const std::function<bool()>& newPage);

/// Saves the pages as PDF on that paper, their text to be searched and copied; what stands there stays as it
/// was where that fails. The margins are the page's own. Throws error 75.
void saveDayPdf(const DayAccount& account, const QString& path, const QPageSize& paper,
                QPageLayout::Orientation orientation = QPageLayout::Portrait);

/// Prints them. Throws error 482 where the printer does not answer.
void printDay(const DayAccount& account, QPrinter& printer);

} // namespace pontrel
