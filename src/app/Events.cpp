#include "app/Events.h"

#include "app/Prompts.h"
#include "store/Database.h"

#include <QApplication>
#include <QScopedValueRollback>

#include <cstdio>
#include <cstdlib>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

std::function<void(int)> processEnd;
bool tellingOfTheEnd = false;

void tellOfTheEnd(const RunTimeError& error) {
    const QScopedValueRollback telling(tellingOfTheEnd, true);
    // Neither the statement nor the cause in the engine's words: they stand on the error output.
    const QString message = u"執行階段錯誤 '%1':\n\n%2"_s; // no statement
    QString text = message.arg(QString::number(error.number()), error.text());
    if (!error.refused().isEmpty())
        text += u"\n欄位："_s + error.refused().join(u'、');
    MsgBox(text + u"\n\n程式即將結束。"_s, ProgramTitle, MsgIcon::Critical);
}

} // namespace

void setProcessEnd(std::function<void(int status)> end) {
    processEnd = std::move(end);
}

void endProcess(int status) {
    closeAllConnections();
    if (processEnd)
        processEnd(status);
    // Without the destructors of the callers' frames and of the statics: nothing of the program may go on.
    std::fflush(nullptr);
    std::_Exit(status);
}

bool isBehindDialog(const QWidget& widget) {
    const QWidget* dialog = QApplication::activeModalWidget();
    return dialog && dialog != widget.window() && !dialog->isAncestorOf(&widget);
}

void logError(const RunTimeError& error) {
    std::fprintf(stderr, "pontrel: %s\n", error.what());
    std::fflush(stderr);
}

void endWithError(const RunTimeError& error) {
    // A further error while the message stands (a repaint, say) ends the program without a second message.
    logError(error);
    if (!tellingOfTheEnd)
        tellOfTheEnd(error);
    endProcess(1);
}

} // namespace pontrel
