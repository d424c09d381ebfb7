#pragma once

#include "windows/ModuleFixture.h"

#include <QHeaderView>
#include <QProgressBar>

namespace pontrel::test {

/// The attendance window.
class Form3Fixture : public ModuleFixture {
  public:
    Form3Fixture() : ModuleFixture(3) {}

    void open() { openModule(3); }

    /// Opens the window anew in a program that has for leave, write-offs, overtime and reports only the
    /// windows that the routine registers.
    void openAmong(const std::function<void()>& registerOthers = {}) {
        form().unload();
        for (const int module : {4, 5, 6, 7})
            registerModuleWindow(module, {});
        if (registerOthers)
            registerOthers();
        OpenToolWindow(3);
    }

    /// The middle one of the three days of addPunches().
    inline static const QDate PunchDay{2001, 3, 5};
    /// Two employees and four punches of three days.
    void addPunches() {
        addEmployee(database(), QStringLiteral("10001"), {{u"EmpName", u"王小明"}});
        addEmployee(database(), QStringLiteral("10002"), {{u"EmpName", u"陳美惠"}});
        addReadPunch(database(), QStringLiteral("10001"), {2001, 3, 4}, QTime(8, 1));
        addReadPunch(database(), QStringLiteral("10001"), PunchDay, QTime(17, 2, 30));
        addReadPunch(database(), QStringLiteral("10002"), PunchDay, QTime(7, 58));
        addReadPunch(database(), QStringLiteral("10001"), {2001, 3, 6}, QTime(8, 3));
    }
    /// The grids of the current page of which some columns lie out of view.
    [[nodiscard]] QStringList gridsOutOfSight() const { return test::gridsOutOfSight(form()); }
    [[nodiscard]] int currentRow(const QString& grid) const { return at<TDBGrid>(grid).currentIndex().row(); }
};

} // namespace pontrel::test
