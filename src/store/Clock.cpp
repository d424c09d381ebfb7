#include "store/Clock.h"

namespace pontrel::clock {

namespace {

std::function<QDateTime()>& source() {
    static std::function<QDateTime()> function;
    return function;
}

} // namespace

QDateTime now() {
    return source() ? source()() : QDateTime::currentDateTime();
}

QDate today() {
    return now().date();
}

void setSource(std::function<QDateTime()> replacement) {
    source() = std::move(replacement);
}

} // namespace pontrel::clock
