#include "windows/system/Form8.h"

#include "app/ControlNames.h"
#include "app/EnterAsTab.h"
#include "app/Events.h"
#include "app/MDI.h"
#include "app/Module1.h"
#include "app/WindowRegistry.h"
#include "app/controls/Buttons.h"

#include <QPushButton>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

const std::array<QString, 4> Captions = {u"系統參數設定"_s, u"權限管理"_s, u"給假規定"_s, u"離開"_s};
constexpr QSize ButtonSize(180, 44);
constexpr int ButtonSpacing = 24;

} // namespace

Form8::Form8(QWidget* parent) : Window(parent) {
    setObjectName(u"Form8"_s);
    setWindowTitle(u"系統管理"_s);
    setAccessibleName(u"系統管理"_s);
    const auto count = static_cast<int>(Captions.size());
    const int height = count * ButtonSize.height() + (count - 1) * ButtonSpacing;
    QPoint place((ModuleWindowSize.width() - ButtonSize.width()) / 2,
                 (ModuleWindowSize.height() - height) / 2);
    for (int index = 0; index < count; ++index) {
        QPushButton* button =
            makeButton(this, indexed(u"CmdSet"_s, index), Captions.at(static_cast<std::size_t>(index)));
        button->setGeometry(QRect(place, ButtonSize));
        place.ry() += ButtonSize.height() + ButtonSpacing;
        CmdSet_.at(static_cast<std::size_t>(index)) = button;
        onEvent(button, &QPushButton::clicked, this, [this, index] { CmdSet_Click(index); });
    }
    EnterAsTab::install(*this);
}

void Form8::registerWindow() {
    registerModuleWindow(8, [](QWidget* parent) -> Window* { return new Form8(parent); });
}

void Form8::onLoad() {
    setGeometry(QRect(QPoint(0, 0), ModuleWindowSize));
    CmdSet_[0]->setEnabled(hasChildWindow(u"FrmSysSet"_s));
    CmdSet_[1]->setEnabled(hasChildWindow(u"FrmPsw"_s));
}

void Form8::onUnload() {
    UnlockToolbar();
}

void Form8::CmdSet_Click(int index) {
    switch (index) {
    case 0:
        openChildWindow(u"FrmSysSet"_s);
        break;
    case 1:
        openChildWindow(u"FrmPsw"_s);
        break;
    case 2:
        break; // There on purpose, and without an action.
    case 3:
        unload();
        break;
    default:
        break;
    }
}

} // namespace pontrel
