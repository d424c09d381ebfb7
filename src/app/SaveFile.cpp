#include "app/SaveFile.h"

#include <QFileInfo>
#include <QStandardPaths>

namespace pontrel {

namespace {

/// Where the last file was saved.
QString& saveFolder() {
    static QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return folder;
}

} // namespace

std::optional<QString>
saveUnderChosenName(const QString& name, const SaveKind& kind, const QString& caption,
                    const std::function<bool(const QString& path, const ProgressStep&)>& save) {
    const std::optional<QString> path = chooseSaveFile(saveFolder() + u'/' + name + u'.' + kind.ending, kind);
    if (!path)
        return std::nullopt;
    saveFolder() = QFileInfo(*path).absolutePath();
    const bool isSaved =
        attempt(caption, [&](const ProgressStep& progress) { return save(*path, progress); });
    return isSaved ? path : std::nullopt;
}

} // namespace pontrel
