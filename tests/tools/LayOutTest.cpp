#include "folder/LayOut.h"
#include "folder/Refusal.h"
#include "store/StorePath.h"
#include "tools/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <memory>
#include <optional>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

std::optional<Refusal> refusalOf(const std::function<void()>& routine) {
    try {
        routine();
    } catch (const Refusal& refusal) {
        return refusal;
    }
    return std::nullopt;
}

} // namespace

/// Lays out versions of a program of three templates.
class LayOutTest : public QObject {
    Q_OBJECT

  private:
    std::unique_ptr<QTemporaryDir> temporary_;
    MasterCopy from_;
    QString folder_;

    /// A new version: its templates and program say so.
    void bring(const QByteArray& version) {
        for (const char16_t* name : {u"/B01.rpt", u"/B02.rpt", u"/C01.rpt"})
            write(from_.templates + QString::fromUtf16(name), "template " + version);
        write(from_.program, "#!/bin/sh\necho " + version + "\nread line\necho done\n");
    }
    [[nodiscard]] QString in(const QString& name) const { return folder_ + u'/' + name; }
    LaidOut layOutNow() { return layOut(from_, folder_); }

  private Q_SLOTS:
    void init() {
        temporary_ = std::make_unique<QTemporaryDir>();
        QVERIFY(temporary_->isValid());
        from_ = {temporary_->filePath(u"usr/lib/pontrel"_s), temporary_->filePath(u"usr/share/report"_s)};
        folder_ = temporary_->filePath(u"王小明 的/差勤"_s);
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(temporary_->filePath(u"config"_s)));
        bring("1");
    }

    void laysOutAFolderThatIsNotThere() {
        const LaidOut done = layOutNow();
        QCOMPARE(done.written,
                 (QStringList{u"report/B01.rpt"_s, u"report/B02.rpt"_s, u"report/C01.rpt"_s, u"pontrel"_s}));
        QCOMPARE(done.kept, QStringList());
        QCOMPARE(below(folder_), (QStringList{u".laid-out"_s, u"pontrel"_s, u"punch"_s, u"report"_s}));
        QCOMPARE(below(in(u"report"_s)), (QStringList{u"B01.rpt"_s, u"B02.rpt"_s, u"C01.rpt"_s}));
        QCOMPARE(contentOf(in(u"report/C01.rpt"_s)), QByteArray("template 1"));
        QVERIFY(QFileInfo(in(u"pontrel"_s)).isExecutable());
        QVERIFY(!QFileInfo(in(u"report/B01.rpt"_s)).isExecutable());
    }

    void changesNothingTheSecondTime() {
        layOutNow();
        const QFileInfo before(in(u".laid-out"_s));
        const QDateTime written = before.lastModified();
        const LaidOut done = layOutNow();
        QCOMPARE(done.written, QStringList());
        QCOMPARE(done.kept, QStringList());
        QCOMPARE(QFileInfo(in(u".laid-out"_s)).lastModified(), written);
    }

    void bringsUntouchedFilesUpToDate() {
        layOutNow();
        bring("2");
        const LaidOut done = layOutNow();
        QCOMPARE(done.written,
                 (QStringList{u"report/B01.rpt"_s, u"report/B02.rpt"_s, u"report/C01.rpt"_s, u"pontrel"_s}));
        QCOMPARE(contentOf(in(u"report/B02.rpt"_s)), QByteArray("template 2"));
        QVERIFY(contentOf(in(u"pontrel"_s)).contains("echo 2"));
        QCOMPARE(below(in(u"report"_s)), (QStringList{u"B01.rpt"_s, u"B02.rpt"_s, u"C01.rpt"_s}));
    }

    void keepsAnEditedTemplateAndOffersEachNewerOneOnce() {
        layOutNow();
        write(in(u"report/B02.rpt"_s), "mine");
        QCOMPARE(layOutNow().kept, QStringList()); // there is no newer one
        QVERIFY(!QFileInfo::exists(in(u"report/B02.rpt.new"_s)));

        bring("2");
        QCOMPARE(layOutNow().kept, QStringList{u"report/B02.rpt"_s});
        QCOMPARE(contentOf(in(u"report/B02.rpt"_s)), QByteArray("mine"));
        QCOMPARE(contentOf(in(u"report/B02.rpt.new"_s)), QByteArray("template 2"));
        QCOMPARE(contentOf(in(u"report/B01.rpt"_s)), QByteArray("template 2"));

        QVERIFY(QFile::remove(in(u"report/B02.rpt.new"_s)));
        QCOMPARE(layOutNow().kept, QStringList());
        QVERIFY(!QFileInfo::exists(in(u"report/B02.rpt.new"_s)));

        bring("3");
        QCOMPARE(layOutNow().kept, QStringList{u"report/B02.rpt"_s});
        QCOMPARE(contentOf(in(u"report/B02.rpt.new"_s)), QByteArray("template 3"));
        QCOMPARE(contentOf(in(u"report/B02.rpt"_s)), QByteArray("mine"));
    }

    void anOfferThatWasTakenIsUntouchedAgain() {
        layOutNow();
        write(in(u"report/B02.rpt"_s), "mine");
        bring("2");
        layOutNow();
        QVERIFY(QFile::remove(in(u"report/B02.rpt"_s)));
        QVERIFY(QFile::rename(in(u"report/B02.rpt.new"_s), in(u"report/B02.rpt"_s)));
        bring("3");
        QCOMPARE(layOutNow().kept, QStringList());
        QCOMPARE(contentOf(in(u"report/B02.rpt"_s)), QByteArray("template 3"));
    }

    void putsAMissingTemplateBack() {
        layOutNow();
        QVERIFY(QFile::remove(in(u"report/C01.rpt"_s)));
        QCOMPARE(layOutNow().written, QStringList{u"report/C01.rpt"_s});
        QCOMPARE(contentOf(in(u"report/C01.rpt"_s)), QByteArray("template 1"));
    }

    void keepsATemplateOfUnknownOrigin_data() {
        QTest::addColumn<QByteArray>("record");
        QTest::newRow("no record") << QByteArray();
        QTest::newRow("a damaged record") << QByteArray("\0\xff\n nonsense\nB01.rpt\n", 21);
        QTest::newRow("a record without a checksum") << QByteArray("  report/B01.rpt\n");
    }

    void keepsATemplateOfUnknownOrigin() {
        QFETCH(const QByteArray, record);
        write(in(u"report/B01.rpt"_s), "whose?");
        if (!record.isEmpty())
            write(in(u".laid-out"_s), record);
        QCOMPARE(layOutNow().kept, QStringList{u"report/B01.rpt"_s});
        QCOMPARE(contentOf(in(u"report/B01.rpt"_s)), QByteArray("whose?"));
        QCOMPARE(contentOf(in(u"report/B01.rpt.new"_s)), QByteArray("template 1"));
    }

    void touchesNothingElse() {
        write(storePathIn(folder_), "the store");
        write(in(u"DB/Pontrel.mdb-journal"_s), "its journal");
        write(in(u"punch/20100301.txt"_s), "punches");
        write(in(u"report/own.rpt"_s), "a template of the site's");
        layOutNow();
        bring("2");
        layOutNow();
        QCOMPARE(below(folder_),
                 (QStringList{u".laid-out"_s, u"DB"_s, u"pontrel"_s, u"punch"_s, u"report"_s}));
        QCOMPARE(below(in(u"DB"_s)), (QStringList{u"Pontrel.mdb"_s, u"Pontrel.mdb-journal"_s}));
        QCOMPARE(contentOf(storePathIn(folder_)), QByteArray("the store"));
        QCOMPARE(contentOf(in(u"DB/Pontrel.mdb-journal"_s)), QByteArray("its journal"));
        QCOMPARE(contentOf(in(u"punch/20100301.txt"_s)), QByteArray("punches"));
        QCOMPARE(contentOf(in(u"report/own.rpt"_s)), QByteArray("a template of the site's"));
    }

    void leavesARunningProgramToThoseWhoRunIt() {
        layOutNow();
        QProcess running;
        running.start(in(u"pontrel"_s), QStringList());
        QVERIFY(running.waitForReadyRead(-1));
        bring("2");
        layOutNow();
        running.write("\n");
        QVERIFY(running.waitForFinished(-1));
        QCOMPARE(running.readAll(), QByteArray("1\ndone\n"));
        QVERIFY(contentOf(in(u"pontrel"_s)).contains("echo 2"));
    }

    void makesGoodWhatAKilledRunHasLeft() {
        layOutNow();
        bring("2");
        // Killed behind the first template, in the middle of the second.
        write(in(u"report/B01.rpt"_s), "template 2");
        write(in(u"report/.B02.rpt.new"_s), "temp");
        QCOMPARE(layOutNow().kept, QStringList());
        QCOMPARE(below(in(u"report"_s)), (QStringList{u"B01.rpt"_s, u"B02.rpt"_s, u"C01.rpt"_s}));
        for (const QString& name : below(in(u"report"_s)))
            QCOMPARE(contentOf(in(u"report/"_s + name)), QByteArray("template 2"));
    }

    void saysWhatIsMissingOrInTheWay() {
        write(folder_, "a file");
        const auto inTheWay = refusalOf([this] { layOutNow(); });
        QVERIFY(inTheWay && inTheWay->reason == Refusal::Reason::NoFolder);
        QCOMPARE(inTheWay->path, folder_);
        QCOMPARE(contentOf(folder_), QByteArray("a file"));
        QVERIFY(QFile::remove(folder_));

        QVERIFY(QDir().mkpath(in(u"report/B02.rpt/folder"_s)));
        layOutNow(); // what is no file is kept like an edited one
        QVERIFY(QFileInfo(in(u"report/B02.rpt"_s)).isDir());

        QVERIFY(QFile::remove(in(u"pontrel"_s)));
        QVERIFY(QDir().mkpath(in(u"pontrel/folder"_s)));
        const auto noPlace = refusalOf([this] { layOutNow(); });
        QVERIFY(noPlace && noPlace->reason == Refusal::Reason::NotWritten);
        QCOMPARE(noPlace->path, in(u"pontrel"_s));
        QVERIFY(!noPlace->technical.isEmpty());
        QVERIFY(!QFileInfo::exists(in(u".pontrel.new"_s)));

        QVERIFY(QFile::remove(from_.program));
        const auto noProgram = refusalOf([this] { layOutNow(); });
        QVERIFY(noProgram && noProgram->reason == Refusal::Reason::NoMasterCopy);
        QVERIFY(QDir(from_.templates).removeRecursively());
        const auto noTemplates = refusalOf([this] { layOutNow(); });
        QVERIFY(noTemplates && noTemplates->reason == Refusal::Reason::NoMasterCopy);
        QCOMPARE(noTemplates->path, from_.templates);
    }

    void tellsFoldersApart() {
        QCOMPARE(stateOf(folder_), FolderState::Missing);
        QVERIFY(QDir().mkpath(folder_));
        QCOMPARE(stateOf(folder_), FolderState::Empty);
        layOutNow();
        QVERIFY(QDir().mkpath(in(u"DB"_s)));
        QCOMPARE(stateOf(folder_), FolderState::Begun);
        write(in(u".profile"_s), "of the user");
        QCOMPARE(stateOf(folder_), FolderState::Foreign);
        write(storePathIn(folder_), "the store");
        QCOMPARE(stateOf(folder_), FolderState::HasStore);
        QCOMPARE(stateOf(storePathIn(folder_)), FolderState::NoFolder);
        QVERIFY(QFile::link(u"/nonexistent/folder"_s, temporary_->filePath(u"link"_s)));
        QCOMPARE(stateOf(temporary_->filePath(u"link"_s)), FolderState::NoFolder);
    }

    void takesBackWhatItHasMadeAlone() {
        layOutNow();
        takeBack(folder_, FolderState::Begun);
        QCOMPARE(stateOf(folder_), FolderState::Begun);
        QVERIFY(QFileInfo::exists(in(u"pontrel"_s)));
        write(storePathIn(folder_), "a store that has come up");
        takeBack(folder_, FolderState::Missing);
        QCOMPARE(contentOf(storePathIn(folder_)), QByteArray("a store that has come up"));
        QVERIFY(QFileInfo::exists(in(u"pontrel"_s)));
        QVERIFY(QFile::remove(storePathIn(folder_)));
        takeBack(folder_, FolderState::Empty);
        QCOMPARE(stateOf(folder_), FolderState::Empty);
        layOutNow();
        takeBack(folder_, FolderState::Missing);
        QCOMPARE(stateOf(folder_), FolderState::Missing);
    }

    void remembersAFolderOfAnyName_data() {
        QTest::addColumn<QString>("folder");
        QTest::newRow("plain") << u"/home/clerk/Pontrel"_s;
        QTest::newRow("Chinese, with blanks") << u"/home/王小明/差勤 系統 "_s;
        QTest::newRow("another") << u"/mnt/x"_s;
    }

    void remembersAFolderOfAnyName() {
        QFETCH(const QString, folder);
        QCOMPARE(rememberedFolder(), QString());
        QVERIFY(rememberFolder(u"/former"_s));
        QVERIFY(rememberFolder(folder));
        QCOMPARE(rememberedFolder(), folder);
        QCOMPARE(below(temporary_->filePath(u"config/pontrel"_s)), QStringList{u"folder"_s});
    }

    void forgetsWhatIsNoFolder_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("a relative path") << QByteArray("Pontrel\n");
    }

    void forgetsWhatIsNoFolder() {
        QFETCH(const QByteArray, content);
        write(temporary_->filePath(u"config/pontrel/folder"_s), content);
        QCOMPARE(rememberedFolder(), QString());
    }

    void tellsWhereNothingCanBeRemembered() {
        write(temporary_->filePath(u"config"_s), "a file");
        QVERIFY(!rememberFolder(u"/home/clerk/Pontrel"_s));
    }
};

QTEST_GUILESS_MAIN(LayOutTest)
#include "LayOutTest.moc"
