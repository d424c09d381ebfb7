#include "app/Form0.h"

#include "app/MDI.h"

namespace pontrel {

using namespace Qt::StringLiterals;

Form0::Form0(QWidget* parent) : Window(parent) {
    setObjectName(u"Form0"_s);
    setAccessibleName(u"空白視窗"_s);
}

void Form0::onLoad() {
    setGeometry(QRect(QPoint(0, 0), ModuleWindowSize));
}

} // namespace pontrel
