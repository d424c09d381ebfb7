#include "tour/Pictures.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <memory>
#include <optional>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace pontrel::test;

namespace {

constexpr int TourMs = 600'000;
const QString FirstLine = u"Logged in as demo."_s;
const QString AloneAgainLine = u"A second start was refused."_s; ///< From here on it is one process.

const QStringList OnDisplay = {QStringLiteral(PONTREL_WITH_DISPLAY)};

/// Mounts temporary folders that refuse to run programs, for the wrapped program alone.
QStringList withoutProgramsInTemporaryFolders() {
    return {u"unshare"_s, ::getuid() == 0 ? u"-m"_s : u"-Urm"_s, u"sh"_s, u"-c"_s,
            u"mount -t tmpfs -o noexec tour-test \"$TMPDIR\" && exec \"$0\" \"$@\""_s};
}

/// The tour in a process of its own: its temporary folders, its user's home and its current folder lie in a
/// folder of the test's. Ended with the object.
class TourProcess {
  public:
    /// Started through the wrapper, a program with its arguments, where one is given.
    explicit TourProcess(const QStringList& arguments = {}, const QStringList& wrapper = {}) {
        for (const QString& name : {u"tmp"_s, u"home"_s, u"here"_s}) {
            if (!QDir(folder_.path()).mkdir(name))
                qFatal("no folder for the test");
        }
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_QPA_PLATFORM"_s, wrapper == OnDisplay ? u"xcb"_s : u"offscreen"_s);
        environment.insert(u"LC_ALL"_s, u"C"_s);
        environment.insert(u"TMPDIR"_s, path(u"tmp"_s));
        environment.insert(u"HOME"_s, path(u"home"_s));
        environment.remove(u"XDG_CONFIG_HOME"_s);
        environment.remove(u"XDG_RUNTIME_DIR"_s);
        process_.setProcessEnvironment(environment);
        process_.setWorkingDirectory(path(u"here"_s));
        const QStringList all = wrapper + QStringList{QStringLiteral(PONTREL_TOUR)} + arguments;
        process_.start(all.constFirst(), all.mid(1));
        if (!process_.waitForStarted())
            qFatal("the tour does not start");
    }
    ~TourProcess() {
        process_.kill();
        process_.waitForFinished();
    }
    TourProcess(const TourProcess&) = delete;
    TourProcess& operator=(const TourProcess&) = delete;

    [[nodiscard]] QString path(const QString& name) const { return folder_.filePath(name); }
    [[nodiscard]] QString pictures() const { return path(u"here/build/tour-pictures"_s); }

    /// Whether it has written the line, while it still runs.
    [[nodiscard]] bool awaitLine(const QString& line) {
        return QTest::qWaitFor(
                   [&] {
                       output_ += process_.readAllStandardOutput();
                       return lines().contains(line) || process_.state() == QProcess::NotRunning;
                   },
                   TourMs) &&
               process_.state() == QProcess::Running;
    }
    /// Its exit status; nothing where it hangs or crashes.
    [[nodiscard]] std::optional<int> awaitEnd() {
        if (process_.state() != QProcess::NotRunning && !process_.waitForFinished(TourMs))
            return std::nullopt;
        output_ += process_.readAllStandardOutput();
        errors_ += process_.readAllStandardError();
        return process_.exitStatus() == QProcess::NormalExit ? std::optional(process_.exitCode())
                                                             : std::nullopt;
    }

    [[nodiscard]] QStringList lines() const { return QString::fromUtf8(output_).split(u'\n'); }
    [[nodiscard]] QString errors() const { return QString::fromUtf8(errors_); }
    [[nodiscard]] qint64 id() const { return process_.processId(); }

    /// The program folder that it has made; empty where there is none.
    [[nodiscard]] QString programFolder() const {
        const QStringList made =
            QDir(path(u"tmp"_s)).entryList({u"pontrel-tour-*"_s}, QDir::Dirs | QDir::NoDotAndDotDot);
        return made.size() == 1 ? path(u"tmp/"_s + made.constFirst()) : QString();
    }
    /// All that lies in a folder of the test's, hidden files too.
    [[nodiscard]] QStringList below(const QString& name) const {
        return QDir(path(name))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

  private:
    QTemporaryDir folder_;
    QProcess process_;
    QByteArray output_;
    QByteArray errors_;
};

/// The process that runs the executable, 0 for none.
pid_t processOf(const QString& executable) {
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        std::error_code refused;
        const std::filesystem::path runs = std::filesystem::read_symlink(entry.path() / "exe", refused);
        if (!refused && QString::fromStdString(runs.string()) == executable)
            return static_cast<pid_t>(std::stoi(entry.path().filename().string()));
    }
    return 0;
}

QString textOf(SQLite::Statement& row, const char* column) {
    return QString::fromUtf8(row.getColumn(column).getText());
}

/// "2010-03-01" as the grid shows it, without zeros in front.
QString shownDate(const QString& date) {
    return QStringList{date.left(4), QString::number(date.mid(5, 2).toInt()),
                       QString::number(date.mid(8, 2).toInt())}
        .join(u'/');
}

/// The first day's exceptions as the store holds them, in the words of the grid.
QList<QStringList> exceptionsInStore(const QString& store) {
    const SQLite::Database database(store.toStdString(), SQLite::OPEN_READONLY);
    SQLite::Statement query(database,
                            "SELECT UseDate, Atte03.EmpNo AS EmpNo, EmpName, TimeNo, Time1, Time2, Time3, "
                            "Time4, DelayF, T1, T2, Cushion3 FROM Atte03 JOIN Base06 ON Base06.EmpNo = "
                            "Atte03.EmpNo WHERE UseDate = '2010-03-01' ORDER BY Atte03.EmpNo, TimeNo");
    QList<QStringList> rows;
    while (query.executeStep()) {
        QStringList cells{shownDate(textOf(query, "UseDate")), textOf(query, "EmpNo"),
                          textOf(query, "EmpName"), textOf(query, "TimeNo")};
        for (const char* time : {"Time1", "Time2", "Time3", "Time4"})
            cells << textOf(query, time).left(5);
        cells << textOf(query, "DelayF");
        for (const char* time : {"T1", "T2"})
            cells << textOf(query, time).left(5);
        cells << textOf(query, "Cushion3");
        rows << cells;
    }
    return rows;
}

int punchesInStore(const QString& store) {
    const SQLite::Database database(store.toStdString(), SQLite::OPEN_READONLY);
    SQLite::Statement query(database, "SELECT count(*) FROM Atte01 WHERE UseDate = '2010-03-01'");
    return query.executeStep() ? query.getColumn(0).getInt() : -1;
}

/// The line as a terminal shows it, one character a place: behind a Han character stands a NUL.
QString onTerminal(const QString& line) {
    QString places;
    for (const QChar character : line) {
        places += character;
        if (character.unicode() >= 0x2e80)
            places += QChar(u'\0');
    }
    return places;
}

/// The cells of a line below or above the rule, cut where the rule's columns stand; nothing where a text
/// reaches over its column.
std::optional<QStringList> cellsOf(const QString& line, const QString& rule) {
    static const QRegularExpression column(u"-+"_s);
    const QString places = onTerminal(line).leftJustified(rule.size(), u' ');
    if (places.size() != rule.size())
        return std::nullopt;
    for (qsizetype place = 0; place < rule.size(); ++place) {
        if (rule.at(place) == u' ' && places.at(place) != u' ')
            return std::nullopt;
    }
    QStringList cells;
    for (const QRegularExpressionMatch& match : column.globalMatch(rule))
        cells << places.mid(match.capturedStart(), match.capturedLength()).remove(QChar(u'\0')).trimmed();
    return cells;
}

/// The share of the picture, in thousandths, that has another colour than most of it.
int inkOf(const QImage& picture) {
    QHash<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    }
    const int most = *std::max_element(counts.cbegin(), counts.cend());
    const int all = picture.width() * picture.height();
    return (all - most) * 1000 / all;
}

} // namespace

class TourTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void takesEveryStep_data();
    void takesEveryStep();
    void findsAPlaceWhereProgramsMayRun();
    void explainsItself();
    void refusesWhatItDoesNotUnderstand_data();
    void refusesWhatItDoesNotUnderstand();
    void aFolderThatCannotBeMadeIsTold();
    void aPictureThatCannotBeWrittenIsAFailure();
    void aStoreThatBreaksOnTheWayIsAFailure();
    void aProgramThatIsKilledIsAFailure();
    void clearsItsFolderAwayWhenItIsEnded();

  private:
    static void checkTable(const QStringList& lines, const QString& store);
    static void checkPictures(const QString& folder);
};

void TourTest::checkTable(const QStringList& lines, const QString& store) {
    const QList<QStringList> expected = exceptionsInStore(store);
    QVERIFY(!expected.isEmpty());
    const qsizetype header = lines.indexOf(u"2010/3/1 異常處理: %1"_s.arg(expected.size()));
    QVERIFY2(header > 0, qUtf8Printable(lines.join(u'\n')));
    const qsizetype rule = header + 2;
    QVERIFY(lines.size() > rule + expected.size() + 1);
    static const QRegularExpression ruleOnly(u"^-+(  -+){11}$"_s);
    QVERIFY2(ruleOnly.match(lines.at(rule)).hasMatch(), qUtf8Printable(lines.at(rule)));
    QCOMPARE(cellsOf(lines.at(header + 1), lines.at(rule)),
             std::optional(QStringList{u"出勤日期"_s, u"員工碼"_s, u"姓名"_s, u"時段"_s, u"上班"_s, u"下班"_s,
                                       u"上班"_s, u"下班"_s, u"遲到.早退"_s, u"時間一"_s, u"時間二"_s,
                                       u"逾時(分)"_s}));
    for (qsizetype row = 0; row < expected.size(); ++row)
        QCOMPARE(cellsOf(lines.at(rule + 1 + row), lines.at(rule)), std::optional(expected.at(row)));
    QCOMPARE(lines.at(rule + 1 + expected.size()), QString());
}

void TourTest::checkPictures(const QString& folder) {
    QStringList names;
    QHash<QString, QImage> seen;
    for (const Picture& expected : expectedPictures()) {
        names << expected.name + u".png"_s;
        const QImage picture(u"%1/%2.png"_s.arg(folder, expected.name));
        QVERIFY2(!picture.isNull(), qUtf8Printable(expected.name));
        const QSize size = picture.size();
        QVERIFY2(size.expandedTo(expected.least) == size && size.boundedTo(expected.most) == size,
                 qUtf8Printable(u"%1 is %2 by %3"_s.arg(expected.name).arg(size.width()).arg(size.height())));
        QVERIFY2(inkOf(picture) >= 20, qUtf8Printable(expected.name));
        seen.insert(expected.name, picture);
    }
    QCOMPARE(QDir(folder).entryList(QDir::Files, QDir::Name), names);
    // Each step shows: what stands before it and behind it is not the same.
    for (const auto& [before, behind] : differentPictures())
        QVERIFY2(seen.value(before) != seen.value(behind), qUtf8Printable(behind));
}

void TourTest::initTestCase() {
    // The tour's program folder is looked for in the temporary folders, so programs must be able to run
    // there.
    QVERIFY(qputenv("TMPDIR", QFile::encodeName(QCoreApplication::applicationDirPath())));
}

void TourTest::takesEveryStep_data() {
    QTest::addColumn<bool>("onDisplay");
    QTest::addColumn<bool>("folderGiven");
    QTest::addRow("without a screen, pictures in the usual folder") << false << false;
    QTest::addRow("on a display, pictures in a folder of their own") << true << true;
}

void TourTest::takesEveryStep() {
    QFETCH(const bool, onDisplay);
    QFETCH(const bool, folderGiven);
    const QTemporaryDir own;
    const QString given = own.filePath(u"打卡 圖片/第一"_s);
    // What an earlier tour that failed has left.
    QVERIFY(QDir().mkpath(given));
    QVERIFY(QImage(9, 9, QImage::Format_RGB32).save(given + u"/00-failed.png"_s));
    TourProcess tour(folderGiven ? QStringList{given} : QStringList(), onDisplay ? OnDisplay : QStringList());
    // A second name for the tour's store, which stays when the tour clears its folder away.
    if (!tour.awaitLine(FirstLine)) {
        (void)tour.awaitEnd();
        QFAIL(qUtf8Printable(tour.errors()));
    }
    const QString store = own.filePath(u"Pontrel.mdb"_s);
    std::filesystem::create_hard_link((tour.programFolder() + u"/DB/Pontrel.mdb"_s).toStdString(),
                                      store.toStdString());
    const std::optional<int> status = tour.awaitEnd();
    QVERIFY2(status == 0, qUtf8Printable(tour.errors() + tour.lines().join(u'\n')));
    const QString pictures = folderGiven ? given : tour.pictures();

    const QStringList lines = tour.lines();
    QVERIFY(lines.contains(u"Read 20100301.txt: %1 punches."_s.arg(punchesInStore(store))));
    QVERIFY(lines.contains(u"Saved five reports of the month as PDF and spreadsheet."_s));
    checkTable(lines, store);
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(lines.mid(lines.size() - 2),
             QStringList({u"The pictures are in %1"_s.arg(pictures), QString()}));
    checkPictures(pictures);
    if (QTest::currentTestFailed())
        return;
    // Nothing else is left anywhere. (On a display the window manager has its cache in the user's home.)
    QCOMPARE(tour.below(u"tmp"_s), QStringList());
    if (!onDisplay)
        QCOMPARE(tour.below(u"home"_s), QStringList());
    QCOMPARE(tour.below(u"here"_s), folderGiven ? QStringList() : QStringList{u"build"_s});
}

void TourTest::findsAPlaceWhereProgramsMayRun() {
    TourProcess tour({}, withoutProgramsInTemporaryFolders());
    const std::optional<int> status = tour.awaitEnd();
    QVERIFY2(status == 0, qUtf8Printable(tour.errors()));
    QVERIFY(QFile::exists(tour.pictures() + u"/16-system.png"_s));
    const QFileInfo program(QStringLiteral(PONTREL_TOUR));
    QCOMPARE(program.dir().entryList({u"pontrel-tour-*"_s}, QDir::Dirs), QStringList());
}

void TourTest::explainsItself() {
    TourProcess tour({u"--help"_s});
    QCOMPARE(tour.awaitEnd(), std::optional(0));
    QVERIFY(tour.lines().constFirst().startsWith(u"Usage: pontrel-tour [FOLDER]"_s));
    QCOMPARE(tour.below(u"here"_s), QStringList());
}

void TourTest::refusesWhatItDoesNotUnderstand_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addRow("two folders") << QStringList{u"a"_s, u"b"_s};
    QTest::addRow("an unknown option") << QStringList{u"--fast"_s};
    QTest::addRow("an empty name") << QStringList{QString()};
}

void TourTest::refusesWhatItDoesNotUnderstand() {
    QFETCH(const QStringList, arguments);
    TourProcess tour(arguments);
    QCOMPARE(tour.awaitEnd(), std::optional(2));
    QVERIFY(tour.errors().startsWith(u"Usage: pontrel-tour [FOLDER]"_s));
    QCOMPARE(tour.below(u"here"_s), QStringList());
    QCOMPARE(tour.below(u"tmp"_s), QStringList());
}

void TourTest::aFolderThatCannotBeMadeIsTold() {
    TourProcess tour({u"/dev/null/pictures"_s});
    QCOMPARE(tour.awaitEnd(), std::optional(1));
    QCOMPARE(tour.errors(), u"The tour failed: the folder /dev/null/pictures cannot be made.\n"_s);
    QCOMPARE(tour.below(u"tmp"_s), QStringList());
}

void TourTest::aPictureThatCannotBeWrittenIsAFailure() {
    const QTemporaryDir own;
    QVERIFY(QDir(own.path()).mkdir(u"03-main-window.png"_s));
    TourProcess tour({own.path()});
    QCOMPARE(tour.awaitEnd(), std::optional(1));
    QVERIFY2(
        tour.errors().contains(u"The tour failed while logging in: the picture 03-main-window.png is "_s),
        qUtf8Printable(tour.errors()));
    QVERIFY(!tour.lines().contains(FirstLine));
    QCOMPARE(tour.below(u"tmp"_s), QStringList());
}

void TourTest::aStoreThatBreaksOnTheWayIsAFailure() {
    TourProcess tour;
    QVERIFY(tour.awaitLine(FirstLine));
    QFile store(tour.programFolder() + u"/DB/Pontrel.mdb"_s);
    QVERIFY(store.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QVERIFY(store.write("no store any more\n") > 0);
    store.close();
    QCOMPARE(tour.awaitEnd(), std::optional(1));
    QVERIFY2(tour.errors().contains(u"The tour failed while "_s), qUtf8Printable(tour.errors()));
    QVERIFY(!QImage(tour.pictures() + u"/00-failed.png"_s).isNull());
    QVERIFY(!QFile::exists(tour.pictures() + u"/16-system.png"_s));
    QCOMPARE(tour.below(u"tmp"_s), QStringList());
}

void TourTest::aProgramThatIsKilledIsAFailure() {
    TourProcess tour;
    QVERIFY(tour.awaitLine(AloneAgainLine));
    const pid_t program = processOf(tour.programFolder() + u"/pontrel"_s);
    QVERIFY(program > 0);
    QCOMPARE(::kill(program, SIGKILL), 0);
    QCOMPARE(tour.awaitEnd(), std::optional(1));
    QVERIFY2(tour.errors().contains(u"The tour failed: the program crashed or was killed.\n"_s),
             qUtf8Printable(tour.errors()));
    QCOMPARE(tour.below(u"tmp"_s), QStringList());
}

void TourTest::clearsItsFolderAwayWhenItIsEnded() {
    TourProcess tour;
    QVERIFY(tour.awaitLine(AloneAgainLine));
    const pid_t program = processOf(tour.programFolder() + u"/pontrel"_s);
    QVERIFY(program > 0);
    QCOMPARE(::kill(static_cast<pid_t>(tour.id()), SIGTERM), 0);
    QCOMPARE(tour.awaitEnd(), std::optional(1));
    QCOMPARE(::kill(program, 0), -1); // It is there no more.
    QCOMPARE(tour.below(u"tmp"_s), QStringList());
}

QTEST_GUILESS_MAIN(TourTest)
#include "TourTest.moc"
