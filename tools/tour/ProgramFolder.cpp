#include "tour/ProgramFolder.h"

#include "demo/Demo.h"
#include "store/Database.h"
#include "store/NewStore.h"
#include "store/RunTimeError.h"
#include "store/StorePath.h"
#include "tour/Clerk.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <filesystem>

#include <unistd.h>

namespace pontrel::tour {

using namespace Qt::StringLiterals;

ProgramFolder::ProgramFolder() {
    makeFolder(QDir::tempPath());
    placeProgram();
    if (::access(program().toLocal8Bit().constData(), X_OK) != 0) {
        makeFolder(QCoreApplication::applicationDirPath());
        placeProgram();
    }
    makeStore();
    layOutTemplates();
    takeDocuments();
}

void ProgramFolder::makeFolder(const QString& parent) {
    folder_ = std::make_unique<QTemporaryDir>(parent + u"/pontrel-tour-XXXXXX"_s);
    if (!folder_->isValid())
        throw StepFailed{u"no folder can be made in %1: %2"_s.arg(parent, folder_->errorString())};
}

void ProgramFolder::makeStore() const {
    const QString store = storePathIn(folder_->path());
    const QString punches = folder_->filePath(PunchFolder);
    try {
        if (!QDir().mkpath(punches))
            throw StepFailed{u"the folder %1 cannot be made."_s.arg(punches)};
        createStore(store, {PunchFolder, DemoAccount, DemoPassword});
        Database database(store);
        createDemo(database, folder_->path());
    } catch (const RunTimeError& error) {
        throw StepFailed{u"the demo store cannot be made in %1: %2 %3"_s.arg(folder_->path(), error.text(),
                                                                             error.technical())};
    }
}

void ProgramFolder::layOutTemplates() const {
    const QDir templates(QStringLiteral(PONTREL_REPORTS));
    const QDir folder(folder_->path());
    bool laidOut = folder.mkdir(u"report"_s);
    const auto names = templates.entryList({u"*.rpt"_s}, QDir::Files);
    for (const QString& name : names)
        laidOut = laidOut && QFile::copy(templates.filePath(name), folder.filePath(u"report/"_s + name));
    if (!laidOut || names.isEmpty())
        throw StepFailed{u"the report templates cannot be laid out in %1."_s.arg(folder_->path())};
}

/// With the configuration read from here, documents are saved here.
void ProgramFolder::takeDocuments() const {
    QFile names(folder_->filePath(u"user-dirs.dirs"_s));
    const QByteArray line = "XDG_DOCUMENTS_DIR=\"" + QFile::encodeName(folder_->path()) + "\"\n";
    if (!names.open(QIODevice::WriteOnly) || names.write(line) != line.size())
        throw StepFailed{u"%1 cannot be written: %2"_s.arg(names.fileName(), names.errorString())};
}

void ProgramFolder::placeProgram() const {
    const std::filesystem::path from = QCoreApplication::applicationFilePath().toStdString();
    const std::filesystem::path to = program().toStdString();
    std::error_code refused;
    std::filesystem::create_hard_link(from, to, refused);
    if (refused && !std::filesystem::copy_file(from, to, refused))
        throw StepFailed{u"the program cannot be copied to %1: %2"_s.arg(
            folder_->path(), QString::fromLocal8Bit(refused.message().c_str()))};
}

} // namespace pontrel::tour
