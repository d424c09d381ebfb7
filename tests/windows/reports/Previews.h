#pragma once

#include "windows/reports/ReportPreview.h"

#include <QApplication>

#include <algorithm>

namespace pontrel::test {

/// The previews that are open, in the order of their titles.
[[nodiscard]] inline QList<ReportPreview*> previews() {
    QList<ReportPreview*> open;
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (auto* preview = qobject_cast<ReportPreview*>(window); preview && preview->isVisible())
            open << preview;
    }
    std::sort(open.begin(), open.end(), [](const ReportPreview* one, const ReportPreview* other) {
        return one->windowTitle() < other->windowTitle();
    });
    return open;
}

} // namespace pontrel::test
