#include "app/Application.h"

#include "app/Events.h"
#include "app/controls/LongTexts.h"
#include "app/controls/TDBGrid.h"
#include "store/RunTimeError.h"

#include <QDialogButtonBox>
#include <QFont>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QLocale>
#include <QPalette>
#include <QProxyStyle>
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

/// Qt's own style, without what it takes over from the desktop: pictures on buttons, and their
/// order. Boxes show the beginning of a text that is too long, those of Qt's own dialogs as well. Grids with
/// little room have smaller margins in their cells.
class ProgramStyle : public QProxyStyle {
  public:
    ProgramStyle() : QProxyStyle(u"Fusion"_s) {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override {
        switch (hint) {
        case SH_DialogButtonBox_ButtonsHaveIcons:
            return 0;
        case SH_DialogButtonLayout:
            return QDialogButtonBox::WinLayout;
        default:
            return QProxyStyle::styleHint(hint, option, widget, result);
        }
    }

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
        const int pixels = QProxyStyle::pixelMetric(metric, option, widget);
        if (metric != PM_FocusFrameHMargin)
            return pixels;
        const auto* grid = qobject_cast<const TDBGrid*>(widget);
        return grid && grid->hasTightCells() ? pixels - 1 : pixels;
    }

    using QProxyStyle::polish;
    void polish(QWidget* widget) override {
        QProxyStyle::polish(widget);
        if (auto* box = qobject_cast<QLineEdit*>(widget))
            longTexts_.watch(*box);
    }

  private:
    LongTexts longTexts_;
};

/// The colours of the style, but for those that are too pale to be read. Fields are disabled wherever rows
/// are only browsed, and some have no other way to be read; a button that is off is not there to be read.
QPalette programPalette() {
    const QColor readOnlyText(0x58, 0x58, 0x58); // 6 : 1 on the ground of a disabled field
    const QColor hint(0x6a, 0x6a, 0x6a);         // 5.4 : 1 on white
    const QColor selection(0x2a, 0x73, 0xb0);    // 5 : 1 beneath white
    const QColor selectionOff(0x6e, 0x6e, 0x6e); // 5 : 1 as well
    QPalette palette = QApplication::style()->standardPalette();
    palette.setColor(QPalette::Disabled, QPalette::Text, readOnlyText);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, readOnlyText);
    palette.setColor(QPalette::PlaceholderText, hint);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, selectionOff);
    for (const auto group : {QPalette::Active, QPalette::Inactive})
        palette.setColor(group, QPalette::Highlight, selection);
    return palette;
}

/// Lists that drop down are fields as well, though the style paints their text as that of a button.
QPalette fieldPalette(QPalette palette) {
    palette.setColor(QPalette::Disabled, QPalette::ButtonText,
                     palette.color(QPalette::Disabled, QPalette::Text));
    return palette;
}

} // namespace

PontrelApplication::PontrelApplication(char** arguments) : QApplication(onlyTheName, arguments) {
    // The program ends with its main window, not with the login that stands alone before it.
    setQuitOnLastWindowClosed(false);
    applyProgramStyle(*this);
    installEventFilter(&zoomKeys_);
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
    QApplication::setPalette(programPalette());
    QApplication::setPalette(fieldPalette(programPalette()), "QComboBox");
    QFont font(u"Noto Sans CJK TC"_s);
    font.setPixelSize(FontPixels);
    QApplication::setFont(font);
}

} // namespace pontrel
