#pragma once

#include <QList>
#include <QSize>
#include <QString>

#include <utility>

namespace pontrel::test {

using namespace Qt::StringLiterals;

/// A picture that the tour takes, and the bounds of its size.
struct Picture {
    QString name;
    QSize least;
    QSize most;
};

/// All of them, in the order of their names.
[[nodiscard]] inline QList<Picture> expectedPictures() {
    const QSize mainWindow(640, 450);
    const QSize message(120, 70);
    const QSize largestMessage(400, 200);
    return {{u"01-login"_s, {260, 110}, {420, 200}},
            {u"02-login-typed"_s, {260, 110}, {420, 200}},
            {u"03-main-window"_s, mainWindow, mainWindow},
            {u"04-second-start"_s, message, largestMessage},
            {u"05-attendance-empty"_s, mainWindow, mainWindow},
            {u"06-choose-file"_s, {400, 300}, {1000, 760}},
            {u"07-reading"_s, mainWindow, mainWindow},
            {u"08-read"_s, message, largestMessage},
            {u"09-punches"_s, mainWindow, mainWindow},
            {u"10-exceptions"_s, mainWindow, mainWindow},
            {u"11-day"_s, {220, 80}, {400, 200}},
            {u"12-calendar"_s, {200, 150}, {500, 400}},
            {u"13-day-chosen"_s, {220, 80}, {400, 200}},
            {u"14-recalculated"_s, message, largestMessage},
            {u"15-exceptions-again"_s, mainWindow, mainWindow},
            {u"16-system"_s, mainWindow, mainWindow},
            {u"17-settings"_s, mainWindow, mainWindow},
            {u"18-folders"_s, {380, 340}, {460, 420}},
            {u"19-settings-edit"_s, mainWindow, mainWindow},
            {u"20-accounts"_s, mainWindow, mainWindow},
            {u"21-accounts-edit"_s, mainWindow, mainWindow},
            {u"30-titles"_s, mainWindow, mainWindow},
            {u"31-titles-edit"_s, mainWindow, mainWindow},
            {u"32-work-types"_s, mainWindow, mainWindow},
            {u"33-units"_s, mainWindow, mainWindow},
            {u"34-units-new"_s, mainWindow, mainWindow},
            {u"35-slots"_s, mainWindow, mainWindow},
            {u"36-slots-new"_s, mainWindow, mainWindow},
            {u"37-classes"_s, mainWindow, mainWindow},
            {u"38-slot-lookup"_s, {400, 330}, {500, 400}},
            {u"39-classes-new"_s, mainWindow, mainWindow},
            {u"40-employees"_s, mainWindow, mainWindow},
            {u"41-employees-new"_s, mainWindow, mainWindow},
            {u"42-employees-page"_s, mainWindow, mainWindow},
            {u"43-employees-page"_s, mainWindow, mainWindow},
            {u"44-employees-page"_s, mainWindow, mainWindow},
            {u"45-employees-page"_s, mainWindow, mainWindow},
            {u"46-employee-lookup"_s, {400, 330}, {500, 450}},
            {u"47-employee-found"_s, mainWindow, mainWindow},
            {u"50-calendar"_s, mainWindow, mainWindow},
            {u"51-days-off"_s, mainWindow, mainWindow},
            {u"52-roster"_s, mainWindow, mainWindow},
            {u"53-roster-made"_s, message, largestMessage},
            {u"54-roster-query"_s, mainWindow, mainWindow},
            {u"55-adjustment"_s, mainWindow, mainWindow},
            {u"56-three-chosen"_s, mainWindow, mainWindow},
            {u"60-query-kinds"_s, {160, 180}, {300, 280}},
            {u"61-exception-of-one"_s, mainWindow, mainWindow},
            {u"62-punches-of-one"_s, mainWindow, mainWindow},
            {u"63-results"_s, mainWindow, mainWindow},
            {u"64-new-roster"_s, mainWindow, mainWindow},
            {u"65-notes"_s, mainWindow, mainWindow},
            {u"66-notes-new"_s, mainWindow, mainWindow},
            {u"67-notes-saved"_s, mainWindow, mainWindow},
            {u"68-exception-answered"_s, mainWindow, mainWindow},
            {u"69-written-off"_s, mainWindow, mainWindow},
            {u"70-leave-types"_s, mainWindow, mainWindow},
            {u"71-leave-types-edit"_s, mainWindow, mainWindow},
            {u"72-grants"_s, mainWindow, mainWindow},
            {u"73-grants-edit"_s, mainWindow, mainWindow},
            {u"74-batch"_s, mainWindow, mainWindow},
            {u"75-batch-open"_s, mainWindow, mainWindow},
            {u"76-batch-question"_s, message, largestMessage},
            {u"77-batch-done"_s, mainWindow, mainWindow},
            {u"78-browse"_s, mainWindow, mainWindow},
            {u"79-browse-one"_s, mainWindow, mainWindow},
            {u"80-hours"_s, mainWindow, mainWindow},
            {u"81-hours-one"_s, mainWindow, mainWindow},
            {u"82-reasons"_s, mainWindow, mainWindow},
            {u"83-reasons-edit"_s, mainWindow, mainWindow},
            {u"84-write-offs"_s, mainWindow, mainWindow},
            {u"85-write-offs-edit"_s, mainWindow, mainWindow},
            {u"86-write-off-batch"_s, mainWindow, mainWindow},
            {u"87-write-off-batch-open"_s, mainWindow, mainWindow},
            {u"88-write-off-counts"_s, mainWindow, mainWindow},
            {u"89-write-offs-counted"_s, mainWindow, mainWindow},
            {u"90-overtime"_s, mainWindow, mainWindow},
            {u"91-overtime-new"_s, mainWindow, mainWindow},
            {u"92-overtime-batch"_s, mainWindow, mainWindow},
            {u"93-overtime-batch-open"_s, mainWindow, mainWindow},
            {u"94-overtime-batch-question"_s, message, largestMessage},
            {u"95-overtime-batch-run"_s, mainWindow, mainWindow},
            {u"96-overtime-list"_s, mainWindow, mainWindow},
            {u"97-overtime-of-one"_s, mainWindow, mainWindow},
            {u"98-overtime-totals"_s, mainWindow, mainWindow},
            {u"99-overtime-total-of-one"_s, mainWindow, mainWindow}};
}

/// Pairs of pictures between which a step shows: what stands before it and behind it is not the same.
[[nodiscard]] inline QList<std::pair<QString, QString>> differentPictures() {
    return {{u"01-login"_s, u"02-login-typed"_s},
            {u"03-main-window"_s, u"05-attendance-empty"_s},
            {u"05-attendance-empty"_s, u"07-reading"_s},
            {u"07-reading"_s, u"09-punches"_s},
            {u"09-punches"_s, u"10-exceptions"_s},
            {u"11-day"_s, u"13-day-chosen"_s},
            {u"03-main-window"_s, u"16-system"_s},
            {u"17-settings"_s, u"19-settings-edit"_s},
            {u"20-accounts"_s, u"21-accounts-edit"_s},
            {u"30-titles"_s, u"31-titles-edit"_s},
            {u"33-units"_s, u"34-units-new"_s},
            {u"35-slots"_s, u"36-slots-new"_s},
            {u"37-classes"_s, u"39-classes-new"_s},
            {u"40-employees"_s, u"41-employees-new"_s},
            {u"42-employees-page"_s, u"43-employees-page"_s},
            {u"44-employees-page"_s, u"45-employees-page"_s},
            {u"50-calendar"_s, u"51-days-off"_s},
            {u"52-roster"_s, u"54-roster-query"_s},
            {u"55-adjustment"_s, u"56-three-chosen"_s},
            {u"61-exception-of-one"_s, u"63-results"_s},
            {u"64-new-roster"_s, u"68-exception-answered"_s},
            {u"68-exception-answered"_s, u"69-written-off"_s},
            {u"65-notes"_s, u"66-notes-new"_s},
            {u"66-notes-new"_s, u"67-notes-saved"_s},
            {u"70-leave-types"_s, u"71-leave-types-edit"_s},
            {u"72-grants"_s, u"73-grants-edit"_s},
            {u"74-batch"_s, u"75-batch-open"_s},
            {u"75-batch-open"_s, u"77-batch-done"_s},
            {u"78-browse"_s, u"79-browse-one"_s},
            {u"80-hours"_s, u"81-hours-one"_s},
            {u"82-reasons"_s, u"83-reasons-edit"_s},
            {u"84-write-offs"_s, u"85-write-offs-edit"_s},
            {u"86-write-off-batch"_s, u"87-write-off-batch-open"_s},
            {u"88-write-off-counts"_s, u"89-write-offs-counted"_s},
            {u"90-overtime"_s, u"91-overtime-new"_s},
            {u"92-overtime-batch"_s, u"93-overtime-batch-open"_s},
            {u"93-overtime-batch-open"_s, u"95-overtime-batch-run"_s},
            {u"96-overtime-list"_s, u"97-overtime-of-one"_s},
            {u"98-overtime-totals"_s, u"99-overtime-total-of-one"_s}};
}

} // namespace pontrel::test
