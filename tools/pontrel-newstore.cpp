// pontrel-newstore: makes the store of a new program folder.

#include "CommandLine.h"
#include "folder/Refusal.h"
#include "folder/StoreMaker.h"
#include "store/RunTimeError.h"
#include "store/StorePath.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRandomGenerator>

#include <cstdio>
#include <optional>

namespace {

using namespace pontrel;
using tools::print;

struct Wish {
    StoreWish store;
    bool passwordInvented = false;
};

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
        status = tools::refuse(complaint, parser);
        return std::nullopt;
    }

    Wish wish;
    wish.store.folder = QDir(parser.positionalArguments().first()).absolutePath();
    wish.store.account = parser.value(account);
    wish.passwordInvented = !parser.isSet(password) && typed.isEmpty();
    wish.store.password = wish.passwordInvented ? inventPassword()
                          : typed.isEmpty()     ? parser.value(password)
                                                : typed;
    wish.store.demo = parser.isSet(demo);
    return wish;
}

/// What the store could not be made for, in a sentence for the user who asked for it.
QString sentence(const Refusal& refusal) {
    switch (refusal.reason) {
    case Refusal::Reason::BeingMade:
        return QStringLiteral("A store is being made in %1 at this moment.").arg(refusal.path);
    case Refusal::Reason::StoreExists:
        return QStringLiteral("%1 exists already. Nothing has been changed.").arg(refusal.path);
    case Refusal::Reason::LeftJournal:
        return QStringLiteral("%1 belongs to a store that is no longer there. Put that store back beside it, "
                              "or move it away. Nothing has been changed.")
            .arg(refusal.path);
    case Refusal::Reason::NotPlaced:
        return QStringLiteral("%1 cannot be put in its place.").arg(refusal.path);
    case Refusal::Reason::NotTold:
        return QStringLiteral("The account cannot be told, so that no store has been made.");
    case Refusal::Reason::NoFolder:
        return QStringLiteral("The folder %1 cannot be made.").arg(refusal.path);
    default:
        return QStringLiteral("Nothing can be written in %1: %2").arg(refusal.path, refusal.technical);
    }
}

/// Told before the store stands: nobody could enter one whose password was never shown.
void tellAccount(const Wish& wish) {
    print(stdout, QStringLiteral("Account: %1").arg(wish.store.account));
    if (wish.passwordInvented)
        print(stdout, QStringLiteral("Password: %1   (shown only this once)").arg(wish.store.password));
    if (std::fflush(stdout) != 0)
        throw Refusal{Refusal::Reason::NotTold, {}, {}};
}

} // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    int status = 0;
    const std::optional<Wish> wish = readCommandLine(application, status);
    if (!wish)
        return status;
    try {
        makeProgramStore(wish->store, [&wish] { tellAccount(*wish); });
        print(stdout, QStringLiteral("Made %1").arg(storePathIn(wish->store.folder)));
        return 0;
    } catch (const Refusal& refusal) {
        print(stderr, sentence(refusal));
    } catch (const RunTimeError& error) {
        print(stderr,
              QStringLiteral("The store could not be made: %1 (%2)").arg(error.text()).arg(error.number()));
        if (!error.technical().isEmpty())
            print(stderr, error.technical());
    }
    return 1;
}
