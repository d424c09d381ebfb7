#pragma once

#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace pontrel::tour {

/// A program folder of the tour's own: a new store with the example organisation and its account, its punch
/// files, the report templates and a copy of this program, so that the windows take the folder for theirs.
/// What is saved from them goes there too. It
/// lies among the temporary files, or where no programs may run there, beside this program; and goes with the
/// object.
class ProgramFolder {
  public:
    /// Throws StepFailed where it cannot be made.
    ProgramFolder();

    [[nodiscard]] QString path() const { return folder_->path(); }
    [[nodiscard]] QString program() const { return folder_->filePath(QStringLiteral("pontrel")); }

  private:
    void makeFolder(const QString& parent);
    void placeProgram() const;
    void makeStore() const;
    void layOutTemplates() const;
    void takeDocuments() const;

    std::unique_ptr<QTemporaryDir> folder_;
};

inline const QString DemoAccount = QStringLiteral("demo");
inline const QString DemoPassword = QStringLiteral("demo");

} // namespace pontrel::tour
