#include "app/RegisterWindows.h"

#include "app/Form8.h"

namespace pontrel {

void registerWindows() {
    Form8::registerWindow();
}

} // namespace pontrel
