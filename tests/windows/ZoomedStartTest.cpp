#include "app/Habits.h"
#include "support/AppSupport.h"
#include "support/Builders.h"
#include "support/Patience.h"
#include "support/RealInput.h"
#include "support/SavedFiles.h"
#include "support/TestStore.h"

#include <QProcess>
#include <QScreen>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// The program itself in a folder of a store, for a user with habits of his own.
class UsersProgram {
  public:
    UsersProgram() { placeExecutable(QStringLiteral(PONTREL_PROGRAM), path()); }
    ~UsersProgram() { end(); }
    UsersProgram(const UsersProgram&) = delete;
    UsersProgram& operator=(const UsersProgram&) = delete;

    [[nodiscard]] QString habits() const { return store_.folder() + u"/settings/pontrel/habits.ini"_s; }
    [[nodiscard]] Habits kept() const {
        Habits habits;
        habits.keepIn(this->habits());
        return habits;
    }

    void start() {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_CONFIG_HOME"_s, store_.folder() + u"/settings"_s);
        process_.setProcessEnvironment(environment);
        process_.start(path(), QStringList());
        if (!process_.waitForStarted(PatienceMs))
            qFatal("the program does not start");
    }
    void end() {
        process_.kill();
        process_.waitForFinished(PatienceMs);
    }

  private:
    [[nodiscard]] QString path() const { return store_.folder() + u"/program"_s; }

    TestStore store_;
    QProcess process_;
};

/// The place of what stands on the screen, which is of one colour otherwise.
QRect placeOnScreen() {
    const QImage screen = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
    const QRgb ground = screen.pixel(screen.width() - 1, screen.height() - 1);
    QRect place;
    for (int y = 0; y < screen.height(); ++y) {
        for (int x = 0; x < screen.width(); ++x) {
            if (screen.pixel(x, y) != ground)
                place |= QRect(x, y, 1, 1);
        }
    }
    return place;
}

/// The size of the login once it stands.
QSize loginSize() {
    QRect last;
    const bool stands = QTest::qWaitFor(
        [&last] {
            const QRect now = placeOnScreen();
            return std::exchange(last, now) == now && now.width() > 100 && now.height() > 60;
        },
        PatienceMs);
    return stands ? last.size() : QSize();
}

} // namespace

/// The program itself on a display of its own, larger than usual.
class ZoomedStartTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theUsersZoomEnlargesTheProgram();
    void aKeyChoosesTheZoomOfTheNextStart();
};

void ZoomedStartTest::theUsersZoomEnlargesTheProgram() {
    UsersProgram program;
    program.start();
    const QSize usual = loginSize();
    program.end();
    QVERIFY(usual.isValid());
    QTRY_VERIFY_WITH_TIMEOUT(placeOnScreen().isEmpty(), PatienceMs);
    program.kept().setZoom(150);
    program.start();
    const QSize large = loginSize();
    QVERIFY(large.isValid());
    // But for the frame, which belongs to the desktop.
    QVERIFY2(std::abs(large.width() - 1.5 * usual.width()) < 12,
             qPrintable(u"%1 and %2"_s.arg(usual.width()).arg(large.width())));
    QVERIFY(large.height() > 1.3 * usual.height());
}

void ZoomedStartTest::aKeyChoosesTheZoomOfTheNextStart() {
    UsersProgram program;
    program.kept().setZoom(150);
    program.start();
    QVERIFY(loginSize().isValid());
    RealInput input;
    input.press(Qt::Key_Control);
    input.tap(Qt::Key_Minus);
    input.release(Qt::Key_Control);
    // Another process has written the file: what this one has read of it is old.
    QTRY_COMPARE_WITH_TIMEOUT(contentOf(program.habits()).simplified(), "[General] zoom=125", PatienceMs);
}

int main(int argc, char** argv) {
    return runTests<ZoomedStartTest>(argc, argv);
}

#include "ZoomedStartTest.moc"
