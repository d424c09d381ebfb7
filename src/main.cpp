#include "app/Application.h"
#include "app/DesktopColors.h"
#include "app/Habits.h"
#include "app/Start.h"
#include "app/Zoom.h"
#include "windows/RegisterWindows.h"

int main(int, char** arguments) {
    pontrel::Habits::ofUser().keepIn(pontrel::Habits::userFile());
    const auto application = pontrel::zoom::startApplication(arguments);
    pontrel::DesktopColors::follow(*application);
    pontrel::registerWindows();
    return pontrel::Main();
}
