#pragma once

#include "app/GridTexts.h"
#include "app/LookupFixture.h"
#include "app/ModuleProbes.h"
#include "app/Toolbar.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBGrid.h"
#include "app/controls/TDBMask.h"
#include "app/controls/TDBTime.h"
#include "support/WindowFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QRadioButton>

namespace pontrel::test {

/// The master data window.
class Form1Fixture : public WindowFixture {
  public:
    Form1Fixture() : WindowFixture(1) { clearPicks(); }
    ~Form1Fixture() { clearPicks(); }

    /// Opens the window on a tab.
    void open(int tab = 0) {
        openModule(1);
        if (tab != 0)
            clickTab(tab);
    }

    [[nodiscard]] QStringList captionsOf(const QString& grid) const {
        return shownCaptions(at<TDBGrid>(grid));
    }
};

} // namespace pontrel::test
