// pontrel-newstore: makes the store of a new program folder.

#include "demo/Demo.h"
#include "store/Database.h"
#include "store/NewStore.h"
#include "store/RunTimeError.h"
#include "store/StorePath.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <sys/file.h>
#include <unistd.h>

namespace {

using namespace pontrel;

/// Ends with this status where the command line cannot be understood; a store that cannot be made ends
/// with 1.
constexpr int UsageStatus = 2;

struct Wish {
    QString folder;
    QString account;
    QString password;
    bool passwordInvented = false;
    bool demo = false;
};

/// A sentence for the user who asked for the store.
struct Refusal {
    QString text;
};

void print(FILE* stream, const QString& text) {
    std::fputs(text.toUtf8().constData(), stream);
    std::fputc('\n', stream);
}

/// Twelve characters without those that are taken for each other when read off a screen; about 68 bits.
QString inventPassword() {
    const QString alphabet = QStringLiteral("abcdefghijkmnpqrstuvwxyzABCDEFGHJKLMNPQRSTUVWXYZ23456789");
    QString password;
    for (int count = 0; count < 12; ++count)
        password += alphabet[QRandomGenerator::system()->bounded(static_cast<int>(alphabet.size()))];
    return password;
}

/// The first line of standard input, without its end.
QString readPassword() {
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        return {};
    QByteArray line = input.readLine();
    for (const char end : {'\n', '\r'})
        if (line.endsWith(end))
            line.chop(1);
    return QString::fromUtf8(line);
}

/// What the command line asks for; nothing where it cannot be understood or asks for help, the status then in
/// status.
std::optional<Wish> readCommandLine(const QCoreApplication& application, int& status) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Makes the store DIR/DB/Pontrel.mdb of a program folder, with its tables, the settings row, the "
        "schemes and\n"
        "one account with all rights. Makes the folders where they are missing; never overwrites a store."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Shows this text."));
    const QCommandLineOption account(QStringLiteral("account"),
                                     QStringLiteral("Name of the account; admin if not given."),
                                     QStringLiteral("NAME"), QStringLiteral("admin"));
    const QCommandLineOption password(QStringLiteral("password"),
                                      QStringLiteral("Its password; invented and printed if not given."),
                                      QStringLiteral("TEXT"));
    const QCommandLineOption passwordInput(
        QStringLiteral("password-stdin"),
        QStringLiteral("Reads the password from standard input, one line, so that no list of processes and "
                       "no history of commands shows it."));
    const QCommandLineOption demo(
        QStringLiteral("demo"),
        QStringLiteral("Adds an example organisation, and its punch files below DIR/punch."));
    parser.addOptions({help, account, password, passwordInput, demo});
    parser.addPositionalArgument(QStringLiteral("DIR"), QStringLiteral("The program folder."));

    const bool understood = parser.parse(application.arguments());
    if (understood && parser.isSet(help)) {
        print(stdout, parser.helpText());
        status = 0;
        return std::nullopt;
    }
    QString complaint;
    if (!understood)
        complaint = parser.errorText();
    else if (parser.positionalArguments().size() != 1 || parser.positionalArguments().first().isEmpty())
        complaint = QStringLiteral("Name one program folder.");
    else if (parser.value(account).isEmpty())
        complaint = QStringLiteral("The account needs a name.");
    else if (parser.isSet(password) && parser.isSet(passwordInput))
        complaint = QStringLiteral("Give the password once.");
    const QString typed = complaint.isEmpty() && parser.isSet(passwordInput) ? readPassword() : QString();
    if (complaint.isEmpty() && parser.isSet(passwordInput) && typed.isEmpty())
        complaint = QStringLiteral("There is no password on the standard input.");
    if (!complaint.isEmpty()) {
        print(stderr, complaint + QStringLiteral("\n\n") + parser.helpText());
        status = UsageStatus;
        return std::nullopt;
    }

    Wish wish;
    wish.folder = QDir(parser.positionalArguments().first()).absolutePath();
    wish.account = parser.value(account);
    wish.passwordInvented = !parser.isSet(password) && typed.isEmpty();
    wish.password = wish.passwordInvented ? inventPassword()
                    : typed.isEmpty()     ? parser.value(password)
                                          : typed;
    wish.demo = parser.isSet(demo);
    return wish;
}

Refusal noFolder(const QString& path) {
    return {QStringLiteral("The folder %1 cannot be made.").arg(path)};
}

void makeFolders(const QString& storeFolder, const QString& punches) {
    try {
        makeStoreFolder(storeFolder);
    } catch (const RunTimeError&) {
        throw noFolder(storeFolder);
    }
    // One that was there may have been open to others.
    if (!QFile::setPermissions(storeFolder,
                               QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner))
        throw noFolder(storeFolder);
    if (!QDir().mkpath(punches))
        throw noFolder(punches);
}

/// Keeps the folder of the store to this run while the object lives: the system frees it when the run ends,
/// however it ends. So what another run has left there can be told from what it is making.
class Workplace {
  public:
    explicit Workplace(const QString& folder)
        : lock_(QFile::encodeName(folder + QStringLiteral("/.making")))
        , descriptor_(::open(lock_.constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600)) {
        if (::flock(descriptor_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
            ::close(descriptor_);
            throw Refusal{QStringLiteral("A store is being made in %1 at this moment.").arg(folder)};
        }
        QDir rests(folder);
        const auto names =
            rests.entryList({QStringLiteral(".new-*")}, QDir::Dirs | QDir::Hidden | QDir::NoSymLinks);
        for (const QString& name : names)
            QDir(rests.filePath(name)).removeRecursively();
    }
    ~Workplace() {
        ::unlink(lock_.constData());
        ::close(descriptor_);
    }
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

  private:
    QByteArray lock_;
    int descriptor_;
};

/// A journal that an earlier store has left in its place would be played into the new one.
void refuseLeftJournal(const QString& store) {
    for (const QString& rest : {store + QStringLiteral("-journal"), store + QStringLiteral("-wal")})
        if (QFileInfo::exists(rest))
            throw Refusal{QStringLiteral("%1 belongs to a store that is no longer there. Put that store back "
                                         "beside it, or move it "
                                         "away. Nothing has been changed.")
                              .arg(rest)};
}

/// Makes the store in a folder of its own first and moves it to its place when it is whole, so that a failure
/// leaves nothing that looks like a store.
void makeStore(const Wish& wish) {
    const QString folder = wish.folder + QStringLiteral("/DB");
    const QString store = folder + u'/' + StoreFile;
    std::optional<Workplace> workplace;
    if (QFileInfo(folder).isDir())
        workplace.emplace(folder);
    // A link that leads nowhere is refused as well: it may point to a disk that is not there at the moment.
    if (QFileInfo::exists(store) || QFileInfo(store).isSymLink())
        throw Refusal{QStringLiteral("%1 exists already. Nothing has been changed.").arg(store)};
    refuseLeftJournal(store);

    const QString punches = wish.folder + u'/' + PunchFolder;
    makeFolders(folder, punches);
    if (!workplace)
        workplace.emplace(folder);

    const QTemporaryDir workshop(folder + QStringLiteral("/.new-XXXXXX"));
    if (!workshop.isValid())
        throw Refusal{QStringLiteral("Nothing can be written in %1: %2").arg(folder, workshop.errorString())};
    const QString unfinished = workshop.filePath(StoreFile);
    createStore(unfinished, {PunchFolder, wish.account, wish.password});
    if (wish.demo) {
        Database database(unfinished);
        createDemo(database, wish.folder);
    }
    // Told before the store stands: nobody could enter one whose password was never shown.
    print(stdout, QStringLiteral("Account: %1").arg(wish.account));
    if (wish.passwordInvented)
        print(stdout, QStringLiteral("Password: %1   (shown only this once)").arg(wish.password));
    if (std::fflush(stdout) != 0)
        throw Refusal{QStringLiteral("The account cannot be told, so that no store has been made.")};
    refuseLeftJournal(store);
    // Refuses to replace a file that has come up in the meantime.
    if (!QFile::rename(unfinished, store))
        throw Refusal{QStringLiteral("%1 cannot be put in its place.").arg(store)};
    print(stdout, QStringLiteral("Made %1").arg(store));
}

} // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    int status = 0;
    const std::optional<Wish> wish = readCommandLine(application, status);
    if (!wish)
        return status;
    try {
        makeStore(*wish);
        return 0;
    } catch (const Refusal& refusal) {
        print(stderr, refusal.text);
    } catch (const RunTimeError& error) {
        print(stderr,
              QStringLiteral("The store could not be made: %1 (%2)").arg(error.text()).arg(error.number()));
        if (!error.technical().isEmpty())
            print(stderr, error.technical());
    }
    return 1;
}
