#include "windows/reports/ReportSearch.h"

#include "app/Events.h"

#include <QElapsedTimer>

namespace pontrel {

namespace {

constexpr int SliceMs = 15;

} // namespace

ReportSearch::ReportSearch(const paper::ReportDocument& document, QObject* parent)
    : QObject(parent), document_(document), next_(document.pageCount()) {
    onEvent(&timer_, &QTimer::timeout, this, [this] { lookFurther(); });
}

void ReportSearch::start(const QString& wanted) {
    wanted_ = wanted;
    hits_.clear();
    next_ = wanted.isEmpty() ? document_.pageCount() : 0;
    if (isDone())
        timer_.stop();
    else
        timer_.start(0);
    Q_EMIT advanced();
}

void ReportSearch::lookFurther() {
    QElapsedTimer passed;
    passed.start();
    do
        paper::findOnPage(document_, next_++, wanted_, hits_);
    while (!isDone() && passed.elapsed() < SliceMs);
    if (isDone())
        timer_.stop();
    Q_EMIT advanced();
}

} // namespace pontrel
