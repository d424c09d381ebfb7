#include "app/Application.h"
#include "app/Module1.h"
#include "windows/RegisterWindows.h"
#include "app/Start.h"

int main(int, char** arguments) {
    const pontrel::PontrelApplication application(arguments);
    pontrel::registerWindows();
    return pontrel::Main();
}
