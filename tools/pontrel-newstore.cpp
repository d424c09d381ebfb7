// pontrel-newstore: makes the store of a new program folder.

#include "demo/Demo.h"
#include "store/Database.h"
#include "store/NewStore.h"
#include "store/RunTimeError.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <cstdio>
#include <optional>

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
    const QCommandLineOption demo(
        QStringLiteral("demo"),
        QStringLiteral("Adds an example organisation, and its punch files below DIR/punch."));
    parser.addOptions({help, account, password, demo});
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
    if (!complaint.isEmpty()) {
        print(stderr, complaint + QStringLiteral("\n\n") + parser.helpText());
        status = UsageStatus;
        return std::nullopt;
    }

    Wish wish;
    wish.folder = QDir(parser.positionalArguments().first()).absolutePath();
    wish.account = parser.value(account);
    wish.passwordInvented = !parser.isSet(password);
    wish.password = wish.passwordInvented ? inventPassword() : parser.value(password);
    wish.demo = parser.isSet(demo);
    return wish;
}

void makeFolder(const QString& path) {
    if (!QDir().mkpath(path))
        throw Refusal{QStringLiteral("The folder %1 cannot be made.").arg(path)};
}

/// Makes the store in a folder of its own first and moves it to its place when it is whole, so that a failure
/// leaves nothing that looks like a store.
void makeStore(const Wish& wish) {
    const QString store = wish.folder + QStringLiteral("/DB/Pontrel.mdb");
    // A link that leads nowhere is refused as well: it may point to a disk that is not there at the moment.
    if (QFileInfo::exists(store) || QFileInfo(store).isSymLink())
        throw Refusal{QStringLiteral("%1 exists already. Nothing has been changed.").arg(store)};

    const QString punches = wish.folder + QStringLiteral("/punch");
    makeFolder(wish.folder + QStringLiteral("/DB"));
    makeFolder(punches);

    const QTemporaryDir workshop(wish.folder + QStringLiteral("/DB/.new-XXXXXX"));
    if (!workshop.isValid())
        throw Refusal{
            QStringLiteral("Nothing can be written in %1/DB: %2").arg(wish.folder, workshop.errorString())};
    const QString unfinished = workshop.filePath(QStringLiteral("Pontrel.mdb"));
    createStore(unfinished, {punches, wish.account, wish.password});
    if (wish.demo) {
        Database database(unfinished);
        createDemo(database, wish.folder);
    }
    // Refuses to replace a file that has come up in the meantime.
    if (!QFile::rename(unfinished, store))
        throw Refusal{QStringLiteral("%1 cannot be put in its place.").arg(store)};

    print(stdout, QStringLiteral("Made %1").arg(store));
    print(stdout, QStringLiteral("Account: %1").arg(wish.account));
    if (wish.passwordInvented)
        print(stdout, QStringLiteral("Password: %1   (shown only this once)").arg(wish.password));
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
