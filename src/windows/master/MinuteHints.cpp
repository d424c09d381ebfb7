#include "windows/master/MinuteHints.h"

#include <map>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

const QString Unit = u"單位：分鐘（0 至 59）\n"_s;

} // namespace

QString minuteHint(const QString& column) {
    // How the daily calculation uses them: some of one half of the day serve the other one as well.
    static const std::map<QString, QString> effects = {
        {u"ElstMin"_s, u"在彈性類別所指的時段，上班卡收到標準時間後這麼多分鐘為止，\n"
                       u"下班卡自標準時間前這麼多分鐘起收；「無彈性」時不採用。\n"
                       u"「至少8小時」與「上午4小時」只放寬上午上班卡。"_s},
        {u"Cushion"_s, u"上班卡在標準時間後這麼多分鐘以內不算遲到；大於 0 時下午也按此值。\n"
                       u"上午的收卡時間同時放寬：上班卡往後、下班卡往前。"_s},
        {u"Cushion1"_s, u"下午的收卡時間放寬這麼多分鐘：上班卡往後、下班卡往前。\n"
                        u"上午的緩衝為 0 時，上班卡也在這麼多分鐘以內不算遲到。"_s},
        {u"Delay"_s, u"緩衝過後這麼多分鐘以內的上班卡記為遲到；大於 0 時下午也按此值。\n"
                     u"上午上班卡收到緩衝加這麼多分鐘為止。"_s},
        {u"Delay1"_s, u"下午上班卡收到緩衝加這麼多分鐘為止。\n"
                      u"上午的遲到為 0 時，也按此值記遲到。"_s},
        {u"Earlier"_s, u"上午下班卡自標準時間前緩衝加這麼多分鐘起收。\n"
                       u"上午、下午任一大於 0 時，早於標準時間的下班卡記為早退，自標準時間算起。"_s},
        {u"Earlier1"_s, u"下午下班卡自標準時間前緩衝加這麼多分鐘起收。\n"
                        u"上午、下午任一大於 0 時，早於標準時間的下班卡記為早退，自標準時間算起。"_s}};
    return Unit + effects.at(column);
}

} // namespace pontrel
