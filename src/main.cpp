#include "app/Application.h"
#include "app/Start.h"
#include "windows/RegisterWindows.h"

int main(int, char** arguments) {
    const pontrel::PontrelApplication application(arguments);
    pontrel::registerWindows();
    return pontrel::Main();
}
