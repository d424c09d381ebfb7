#include "app/Zoom.h"

#include "app/Application.h"
#include "app/MDI.h"

#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace pontrel::zoom {

namespace {

constexpr int WholePercent = 100;
constexpr int MostOfScreen = 60; ///< Percent of its area that a proposed window takes.
constexpr int FrameHeight = 32;  ///< Pixels of a usual frame's caption, which the zoom leaves alone.
constexpr int FrameWidth = 8;    ///< Of its two sides.
constexpr auto Factor = "QT_SCALE_FACTOR";

int zoomInForce = Habits::FullSize;

QSize windowAt(int percent) {
    return MainWindowSize * percent / WholePercent;
}

bool fits(int percent, QSize screen) {
    const QSize window = windowAt(percent);
    return window.width() <= screen.width() && window.height() + FrameHeight <= screen.height();
}

bool leavesRoom(int percent, QSize screen) {
    const auto area = [](QSize size) { return qint64(size.width()) * size.height(); };
    return area(windowAt(percent)) * WholePercent <= area(screen) * MostOfScreen;
}

template<typename Condition>
int largestStep(const Condition& condition) {
    const auto found = std::find_if(Steps.rbegin(), Steps.rend(), condition);
    return found == Steps.rend() ? Steps.front() : *found;
}

/// Sets the factor that Qt reads while an application object is made, for as long.
class FactorOf {
  public:
    explicit FactorOf(int percent) : before_(qgetenv(Factor)) {
        bool isNumber = false;
        const double desktop = before_.toDouble(&isNumber);
        const double own = static_cast<double>(percent) / WholePercent;
        if (percent != Habits::FullSize)
            qputenv(Factor, QByteArray::number(isNumber && desktop > 0 ? own * desktop : own));
    }
    ~FactorOf() {
        if (before_.isNull())
            qunsetenv(Factor);
        else
            qputenv(Factor, before_);
    }
    FactorOf(const FactorOf&) = delete;
    FactorOf& operator=(const FactorOf&) = delete;

  private:
    QByteArray before_;
};

std::unique_ptr<PontrelApplication> applicationAt(int percent, char** arguments) {
    const FactorOf factor(percent);
    zoomInForce = percent;
    return std::make_unique<PontrelApplication>(arguments);
}

} // namespace

int stepOf(int percent) {
    return std::find(Steps.begin(), Steps.end(), percent) == Steps.end() ? Habits::FullSize : percent;
}

int largestFitting(QSize screen) {
    return largestStep([screen](int percent) { return fits(percent, screen); });
}

int proposed(QSize screen) {
    return largestStep(
        [screen](int percent) { return fits(percent, screen) && leavesRoom(percent, screen); });
}

QSize screenRoom() {
    return QGuiApplication::primaryScreen()->availableSize() * inForce() / WholePercent;
}

QSize roomFor(const QWidget& window) {
    const QWidget* parent = window.parentWidget();
    const QSize screen = (parent ? parent->window() : &window)->screen()->availableSize();
    const auto ofFrame = [](int pixels) { return (pixels * WholePercent + inForce() - 1) / inForce(); };
    return screen - QSize(ofFrame(FrameWidth), ofFrame(FrameHeight));
}

void keepOnScreen(QWidget& window) {
    window.ensurePolished();
    const QSize wanted = window.testAttribute(Qt::WA_Resized) ? window.size() : window.sizeHint();
    const QSize fitting = wanted.boundedTo(roomFor(window));
    if (fitting != wanted)
        window.resize(fitting);
}

int inForce() {
    return zoomInForce;
}

std::unique_ptr<PontrelApplication> startApplication(char** arguments) {
    const int wanted = stepOf(Habits::ofUser().zoom());
    auto application = applicationAt(wanted, arguments);
    // How large the screen is, only an application object tells.
    const int most = largestFitting(screenRoom());
    if (wanted <= most)
        return application;
    application.reset();
    return applicationAt(most, arguments);
}

} // namespace pontrel::zoom
