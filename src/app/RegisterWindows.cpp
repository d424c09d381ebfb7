#include "app/RegisterWindows.h"

#include "app/Form8.h"
#include "app/FrmPsw.h"
#include "app/FrmSysSet.h"
#include "attendance/Form3.h"
#include "master/Form1.h"
#include "schedule/Form2.h"

namespace pontrel {

void registerWindows() {
    Form1::registerWindow();
    Form2::registerWindow();
    Form3::registerWindow();
    Form8::registerWindow();
    FrmPsw::registerWindow();
    FrmSysSet::registerWindow();
}

} // namespace pontrel
