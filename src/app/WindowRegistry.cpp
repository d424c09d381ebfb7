#include "app/WindowRegistry.h"

#include "app/MDI.h"
#include "app/Module1.h"
#include "app/Toolbar.h"
#include "app/WindowPlace.h"

#include <array>
#include <map>

namespace pontrel {

namespace {

bool isModule(int index) {
    return index >= 1 && index <= Toolbar::ButtonCount;
}

WindowPlace& modulePlace(int index) {
    static std::array<WindowPlace, Toolbar::ButtonCount> places;
    return places.at(static_cast<std::size_t>(index - 1));
}

std::map<QString, WindowPlace>& childPlaces() {
    static std::map<QString, WindowPlace> places;
    return places;
}

} // namespace

void registerModuleWindow(int index, std::function<Window*(QWidget* parent)> create) {
    modulePlace(index).setCreate(std::move(create));
}

bool hasModuleWindow(int index) {
    return isModule(index) && modulePlace(index).isRegistered();
}

void openModuleWindow(int index, QWidget* parent) {
    if (hasModuleWindow(index))
        modulePlace(index).open(parent);
}

Window* moduleWindow(int index) {
    return isModule(index) ? modulePlace(index).window() : nullptr;
}

void registerChildWindow(const QString& name, std::function<Window*(QWidget* parent)> create) {
    childPlaces()[name].setCreate(std::move(create));
}

bool hasChildWindow(const QString& name) {
    const auto place = childPlaces().find(name);
    return place != childPlaces().end() && place->second.isRegistered();
}

void openChildWindow(const QString& name) {
    if (hasChildWindow(name))
        childPlaces()[name].open(gMDI->clientArea());
}

Window* childWindow(const QString& name) {
    const auto place = childPlaces().find(name);
    return place == childPlaces().end() ? nullptr : place->second.window();
}

} // namespace pontrel
