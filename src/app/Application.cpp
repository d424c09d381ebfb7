#include "app/Application.h"

#include "app/Events.h"
#include "app/ProgramStyle.h"
#include "app/help/HelpKey.h"
#include "store/RunTimeError.h"

#include <QFont>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QThread>
#include <QTranslator>

#include <new>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int OutOfMemory = 7;
constexpr int InternalError = 51;
constexpr int FontPixels = 13;

int onlyTheName = 1;

} // namespace

PontrelApplication::PontrelApplication(char** arguments) : QApplication(onlyTheName, arguments) {
    // The program ends with its main window, not with the login that stands alone before it.
    setQuitOnLastWindowClosed(false);
    applyProgramStyle(*this);
    installEventFilter(&zoomKeys_);
    new HelpKey(this);
}

bool PontrelApplication::deliver(QObject* receiver, QEvent* event) {
    if (QThread::currentThread() != thread()) // Qt has threads of its own
        return QApplication::notify(receiver, event);
    const InputGate::Delivery delivery(gate_, *receiver, *event);
    return delivery.isDropped() || QApplication::notify(receiver, event);
}

bool PontrelApplication::notify(QObject* receiver, QEvent* event) {
    try {
        return deliver(receiver, event);
    } catch (const RunTimeError& error) {
        endWithError(error);
    } catch (const std::bad_alloc&) {
        endWithError(RunTimeError(OutOfMemory, u"記憶體不足"_s));
    } catch (const std::exception& error) {
        endWithError(RunTimeError(InternalError, u"內部錯誤"_s, QString::fromUtf8(error.what())));
    }
}

void applyProgramStyle(QApplication& application) {
    QLocale::setDefault(QLocale(u"zh_TW"_s));
    const QString catalogues = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    auto* translator = new QTranslator(&application);
    if (translator->load(u"qtbase_zh_TW"_s, catalogues))
        QCoreApplication::installTranslator(translator);
    QApplication::setStyle(new ProgramStyle); // The application owns it.
    QFont font(u"Noto Sans CJK TC"_s);
    font.setPixelSize(FontPixels);
    QApplication::setFont(font);
    // Those of the desktop entry that the package brings; no icon without it.
    QGuiApplication::setDesktopFileName(u"pontrel"_s);
    QApplication::setWindowIcon(QIcon::fromTheme(u"pontrel"_s));
}

} // namespace pontrel
