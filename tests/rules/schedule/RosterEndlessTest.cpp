#include "rules/schedule/RosterDesk.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QElapsedTimer>
#include <QTest>
#include <QThread>

#include <csignal>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate Start(2001, 3, 1);
constexpr int PatienceMs = 60'000;

/// Runs the routine in a process of its own, which ends with status 0 after it.
class Child {
  public:
    explicit Child(const std::function<void()>& routine) : process_(fork()) {
        if (process_ != 0)
            return;
        routine();
        _exit(0);
    }
    ~Child() {
        if (!ended_)
            kill();
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    [[nodiscard]] bool isRunning() {
        if (!ended_ && waitpid(process_, &status_, WNOHANG) == process_)
            ended_ = true;
        return !ended_;
    }
    /// The signal that ended it.
    int kill() {
        ::kill(process_, SIGKILL);
        waitpid(process_, &status_, 0);
        ended_ = true;
        return WIFSIGNALED(status_) ? WTERMSIG(status_) : 0;
    }

  private:
    pid_t process_;
    int status_ = 0;
    bool ended_ = false;
};

/// What the child does: a connection of its own, since none may be taken over from the parent.
void generateIn(const QString& path, const RosterRange& range) {
    Database database(path);
    FakeRosterHost host(&database);
    QString gPickClsNo;
    QString gPickEmpNo;
    RosterGeneration generation(database, host, {gPickClsNo, gPickEmpNo, Start, Start});
    generation.GenerateRoster(range);
}

} // namespace

/// Runs that are ended from outside.
class RosterEndlessTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aRotationThatNeverEndsIsStoppedOnlyFromOutside_data() {
        QTest::addColumn<bool>("stepInUse");
        QTest::addRow("a step without days and rests") << true;
        QTest::addRow("a class without a step") << false;
    }

    void aRotationThatNeverEndsIsStoppedOnlyFromOutside() {
        QFETCH(const bool, stepInUse);
        RosterDesk desk;
        if (stepInUse)
            desk.addClass(u"001"_s, {{u"A", 0, 0}});
        desk.addMember(u"E1"_s, u"001"_s);
        const QString path = desk.store.path();
        Child child([&path] { generateIn(path, RosterDesk::range(Start, Start)); });
        // The same run over a class with a day ends in a few milliseconds.
        QThread::msleep(1500);
        QVERIFY(child.isRunning());
        QCOMPARE(child.kill(), SIGKILL);
        QCOMPARE(desk.roster(), QStringList());
    }

    void aKilledRunLeavesWholeDaysInASoundStore() {
        constexpr int Employees = 400;
        RosterDesk desk;
        desk.store.holdOpen();
        desk.addClass(u"001"_s, {{u"A", 5, 0}});
        for (int number = 0; number < Employees; ++number)
            desk.addMember(u"E%1"_s.arg(number, 4, 10, QLatin1Char('0')), u"001"_s);
        desk.store.commit();
        const QString path = desk.store.path();
        Child child([&path] { generateIn(path, RosterDesk::range(Start, Start.addYears(30))); });
        QElapsedTimer waited;
        waited.start();
        while (desk.roster().size() < 20 * Employees && !waited.hasExpired(PatienceMs))
            QThread::msleep(5);
        QVERIFY(child.isRunning());
        QCOMPARE(child.kill(), SIGKILL);

        const SQLite::Database engine(path.toStdString(), SQLite::OPEN_READWRITE);
        SQLite::Statement check(engine, "PRAGMA integrity_check");
        QVERIFY(check.executeStep());
        QCOMPARE(QString::fromUtf8(check.getColumn(0).getText()), u"ok"_s);
        const QStringList days = rowsOfSelection(
            desk.database(), u"select YMD, count(*) as cnt from Rule03 group by YMD order by YMD"_s);
        QVERIFY(days.size() >= 20);
        QStringList expected;
        for (int day = 0; day < days.size(); ++day)
            expected += Start.addDays(day).toString(u"yyyy-MM-dd") + u"|%1"_s.arg(Employees);
        QCOMPARE(days, expected);
    }
};

QTEST_GUILESS_MAIN(RosterEndlessTest)
#include "RosterEndlessTest.moc"
