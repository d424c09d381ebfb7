#include "windows/RegisterWindows.h"

#include "windows/attendance/Form3.h"
#include "windows/leave/Form4.h"
#include "windows/master/Form1.h"
#include "windows/overtime/Form6.h"
#include "windows/reports/Form7.h"
#include "windows/schedule/Form2.h"
#include "windows/system/Form8.h"
#include "windows/system/FrmPsw.h"
#include "windows/system/FrmSysSet.h"
#include "windows/writeoff/Form5.h"

namespace pontrel {

void registerWindows() {
    Form1::registerWindow();
    Form2::registerWindow();
    Form3::registerWindow();
    Form4::registerWindow();
    Form5::registerWindow();
    Form6::registerWindow();
    Form7::registerWindow();
    Form8::registerWindow();
    FrmPsw::registerWindow();
    FrmSysSet::registerWindow();
}

} // namespace pontrel
