#include "app/Toolbar.h"

#include "app/ControlNames.h"
#include "app/EnterAsTab.h"
#include "app/Events.h"

#include <QPushButton>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

const std::array<QString, Toolbar::ButtonCount> Captions = {u"基本資料"_s, u"制度管理"_s, u"出勤管理"_s,
                                                            u"差假管理"_s, u"註銷管理"_s, u"加班管理"_s,
                                                            u"報表列印"_s, u"系統管理"_s};
constexpr int ButtonHeight = 50;
constexpr int LitDarker = 125; ///< Percent.

/// A button that shows its own state also inside a disabled toolbar: the one left enabled there is lit.
class ToolbarButton : public QPushButton {
  public:
    ToolbarButton(const QString& caption, Toolbar* toolbar) : QPushButton(caption, toolbar) {
        setFixedHeight(ButtonHeight);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QStyleOptionButton option;
        initStyleOption(&option);
        if (isEnabledTo(parentWidget()) && !parentWidget()->isEnabled()) {
            option.state |= QStyle::State_Enabled | QStyle::State_On;
            option.palette.setCurrentColorGroup(QPalette::Active);
            // The style makes it lighter again than the caption can bear.
            option.palette.setColor(QPalette::Button,
                                    option.palette.color(QPalette::Highlight).darker(LitDarker));
            option.palette.setColor(QPalette::ButtonText, option.palette.color(QPalette::HighlightedText));
        }
        QStylePainter(this).drawControl(QStyle::CE_PushButton, option);
    }
};

} // namespace

Toolbar::Toolbar(QWidget* parent) : QWidget(parent) {
    setObjectName(u"Tb"_s);
    setAccessibleName(u"工具列"_s);
    setFixedWidth(Width);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(1, 2, 2, 0);
    column->setSpacing(2);
    for (int number = 1; number <= ButtonCount; ++number) {
        auto* button = new ToolbarButton(caption(number), this);
        button->setObjectName(indexed(u"Tb"_s, number));
        button->setAccessibleName(caption(number));
        column->addWidget(button);
        buttons_.at(static_cast<std::size_t>(number - 1)) = button;
        onEvent(button, &QAbstractButton::clicked, this, [this, number] { Q_EMIT ButtonClick(number); });
    }
    column->addStretch();
    EnterAsTab::install(*this); // so that Enter presses a button as Space does
}

QAbstractButton* Toolbar::button(int number) const {
    return buttons_.at(static_cast<std::size_t>(number - 1));
}

QString Toolbar::caption(int number) const {
    return Captions.at(static_cast<std::size_t>(number - 1));
}

bool Toolbar::isButtonEnabled(int number) const {
    return button(number)->isEnabledTo(this);
}

void Toolbar::setButtonEnabled(int number, bool enabled) {
    button(number)->setEnabled(enabled);
    button(number)->update();
}

} // namespace pontrel
