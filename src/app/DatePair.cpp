#include "app/DatePair.h"

#include "app/FocusWatch.h"
#include "app/KeyHook.h"
#include "app/Prompts.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBMask.h"
#include "rules/ActionHost.h"
#include "rules/Calendar.h"
#include "store/Format.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPointer>

#include <algorithm>

namespace pontrel {

namespace {

constexpr int MaskFrame = 16; ///< Pixels of a mask beside its text.

} // namespace

DateFields makeDateFields(QWidget* parent, const QString& maskName, const QString& dateName,
                          const QString& spokenName) {
    auto* mask = new TDBMask(parent);
    mask->setObjectName(maskName);
    mask->setAccessibleName(spokenName);
    mask->setFixedWidth(mask->fontMetrics().horizontalAdvance(QStringLiteral("00/00/00")) + MaskFrame);
    auto* date = new TDBDate(parent);
    date->setObjectName(dateName);
    date->setAccessibleName(spokenName + QStringLiteral("選擇"));
    mask->setToolTip(
        QStringLiteral("民國年月日，如 900305。\n民國 100 年起請按 F4，在月曆鍵入 1150305，按 Enter。"));
    date->setToolTip(QStringLiteral("按 F4 開啟月曆，鍵入 1150305 或 20260305，按 Enter。"));
    return {mask, date};
}

DatePair::DatePair(TDBMask* mask, TDBDate* date, int index, const DatePairRules& rules, FocusWatch& watch,
                   bool& updating, int& badDateMark)
    : QObject(mask)
    , mask_(mask)
    , date_(date)
    , index_(index)
    , rules_(rules)
    , updating_(updating)
    , badDateMark_(badDateMark) {
    connect(mask, &TDBMask::changed, this, &DatePair::DatePairMaskChange);
    connect(date, &TDBDate::changed, this, &DatePair::DatePairDateChange);
    // Days from 2011 on are chosen in the calendar, and the hand need not leave the mask for it.
    onKeyDown(*mask, [this](const QKeyEvent& key) {
        const bool opens = key.key() == Qt::Key_F4 ||
                           (key.key() == Qt::Key_Down && key.modifiers().testFlag(Qt::AltModifier));
        if (opens)
            date_->showPopup();
        return opens;
    });
    connect(date, &TDBDate::chosen, this, &DatePair::leaveEmptyMask);
    if (rules_.message)
        watch.onLostFocus(mask, [this] { maskLostFocus(); });
}

std::optional<QDate> DatePair::dateOf(const QString& maskValue) {
    const auto isDigit = [](QChar character) { return character >= u'0' && character <= u'9'; };
    if (maskValue.size() != TDBMask::Places || !std::all_of(maskValue.begin(), maskValue.end(), isDigit))
        return std::nullopt;
    const QDate date(maskValue.left(2).toInt() + RepublicZero, maskValue.mid(2, 2).toInt(),
                     maskValue.mid(4).toInt());
    return date.isValid() ? std::optional(date) : std::nullopt;
}

QString DatePair::maskText(QDate date) {
    return QString::number(date.year() - RepublicZero) + formatDate(date, QStringLiteral("mmdd"));
}

void DatePair::DatePairMaskChange() {
    if (rules_.markBase != 0)
        badDateMark_ = 0;
    const QString value = mask_->value();
    if (const auto date = dateOf(value))
        setDateFromMask(*date);
    else if (rules_.emptyFollows && value.isEmpty())
        setDateFromMask({});
    else if (rules_.markBase != 0)
        badDateMark_ = rules_.markBase + index_;
}

void DatePair::setDateFromMask(QDate date) {
    const QPointer<DatePair> self(this);
    updating_ = true;
    date_->setDate(date);
    // The pair's own events; any other would come in ahead of the change that is being carried out.
    QCoreApplication::sendPostedEvents(date_);
    if (self)
        QCoreApplication::sendPostedEvents(mask_);
    if (self)
        updating_ = false;
}

void DatePair::DatePairDateChange() {
    const QDate date = date_->date();
    if (!date.isValid()) {
        if (rules_.emptyFollows)
            mask_->clear();
        return;
    }
    if (updating_)
        return;
    const QString text = maskText(date);
    if (text.size() > TDBMask::Places && rules_.markBase != 0)
        badDateMark_ = 0; // the mask goes blank without a change of its own, and that is no bad date
    mask_->setValue(text);
}

void DatePair::leaveEmptyMask() {
    if (mask_->value().isEmpty() && mask_->window()->focusWidget() == mask_)
        date_->setFocus(Qt::OtherFocusReason);
}

void DatePair::maskLostFocus() {
    const bool marked = rules_.anyMark ? badDateMark_ != 0 : badDateMark_ == rules_.markBase + index_;
    if (!marked)
        return;
    MsgBox(QStringLiteral("日期格式輸入錯誤,請重新輸入"), WarningTitle);
    if (rules_.focusBack)
        FocusWatch::putBack(*mask_);
}

} // namespace pontrel
