#include "store/HeldFile.h"

#include "support/SavedFiles.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <sys/stat.h>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

/// Files that one process, and in it one object, has for itself.
class HeldFileTest : public QObject {
    Q_OBJECT

    QTemporaryDir folder_;
    QString path_ = folder_.filePath(u"file"_s);

  private Q_SLOTS:
    void cleanup() { QFile::remove(path_); }

    void aNewFileIsItsOwnersAlone() {
        const mode_t before = ::umask(0);
        const HeldFile file(path_, HeldFile::Open::New);
        ::umask(before);
        QVERIFY(file.held() && file.sync());
        struct stat state {};
        QCOMPARE(::stat(QFile::encodeName(path_).constData(), &state), 0);
        QCOMPARE(state.st_mode & 07777, mode_t{0600});
    }

    void aFileThatIsThereIsNoNewOne() {
        writeContent(path_, "mine");
        QVERIFY(!HeldFile(path_, HeldFile::Open::New).held());
        QVERIFY(HeldFile(path_, HeldFile::Open::Existing).held());
        QCOMPARE(contentOf(path_), QByteArray("mine"));
    }

    void aFileThatIsNotThereIsNotMade() {
        QVERIFY(!HeldFile(path_, HeldFile::Open::Existing).held());
        QVERIFY(!QFile::exists(path_));
    }

    void oneHoldsIt() {
        auto first = std::make_unique<HeldFile>(path_, HeldFile::Open::New);
        QVERIFY(!HeldFile(path_, HeldFile::Open::Existing).held());
        QVERIFY(first->held());
        first.reset();
        QVERIFY(HeldFile(path_, HeldFile::Open::Existing).held());
    }

    /// Somebody may have laid it there to have another file written to.
    void aLinkIsNotFollowed() {
        const QString other = folder_.filePath(u"other"_s);
        writeContent(other, "theirs");
        QVERIFY(QFile::link(other, path_));
        QVERIFY(!HeldFile(path_, HeldFile::Open::Existing).held());
        QVERIFY(!HeldFile(path_, HeldFile::Open::New).held());
        QCOMPARE(contentOf(other), QByteArray("theirs"));
    }
};

QTEST_GUILESS_MAIN(HeldFileTest)
#include "HeldFileTest.moc"
