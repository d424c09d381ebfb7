#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// What the program has answered.
struct Answer {
    int status;
    QString errors;
};

Answer run(const QStringList& arguments) {
    QProcess program;
    program.start(QStringLiteral(PONTREL_MANUAL_PICTURES), arguments);
    if (!program.waitForFinished(-1) || program.exitStatus() != QProcess::NormalExit)
        qFatal("pontrel-manual-pictures did not end by itself");
    return {program.exitCode(), QString::fromUtf8(program.readAllStandardError())};
}

/// A picture of the colours, one a pixel, on 128 columns.
QImage pictureOf(const std::function<QRgb(int)>& colour) {
    QImage picture(128, 128, QImage::Format_RGB32);
    for (int pixel = 0; pixel < 128 * 128; ++pixel)
        picture.setPixel(pixel % 128, pixel / 128, colour(pixel));
    return picture;
}

QSet<QRgb> coloursOf(const QImage& picture) {
    QSet<QRgb> colours;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            colours << picture.pixel(x, y);
    }
    return colours;
}

/// The folders of a tour and of a manual with one chapter, which names two of the tour's pictures.
struct Folders {
    QTemporaryDir root;
    QString tour = root.filePath(u"tour"_s);
    QString manual = root.filePath(u"manual"_s);

    Folders() {
        if (!QDir().mkpath(tour) || !QDir().mkpath(manual + u"/pictures"_s))
            qFatal("no folders");
        QFile chapter(manual + u"/index.md"_s);
        if (!chapter.open(QIODevice::WriteOnly) ||
            chapter.write("# One\n\n![a](pictures/few.png)\n\n![b](pictures/many.png)\n") < 0)
            qFatal("no chapter");
        few.save(tour + u"/few.png"_s);
        many.save(tour + u"/many.png"_s);
        few.save(tour + u"/unnamed.png"_s);
    }
    [[nodiscard]] QString laid(const QString& name) const { return manual + u"/pictures/"_s + name; }

    const QImage few = pictureOf([](int pixel) { return qRgb(pixel % 200, 7, 9); });
    const QImage many = pictureOf([](int pixel) { return qRgb(pixel % 128, pixel / 128, 77); });
};

} // namespace

/// The program that renews the pictures of the manual.
class ManualPicturesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void laysThePicturesThatAreNamed();
    void removesThoseThatAreNamedNoMore();
    void aPictureThatIsNotThereIsAFailure();
    void explainsItself();
};

void ManualPicturesTest::laysThePicturesThatAreNamed() {
    const Folders folders;
    const Answer answer = run({folders.tour, folders.manual});
    QCOMPARE(answer.errors, QString());
    QCOMPARE(answer.status, 0);
    QCOMPARE(QDir(folders.manual + u"/pictures"_s).entryList(QDir::Files),
             QStringList({u"few.png"_s, u"many.png"_s}));
    // With few colours it is the same, else each part of a colour is off by little.
    QCOMPARE(QImage(folders.laid(u"few.png"_s)).convertToFormat(QImage::Format_RGB32), folders.few);
    const QImage many(folders.laid(u"many.png"_s));
    QCOMPARE(many.size(), folders.many.size());
    QCOMPARE(many.format(), QImage::Format_Indexed8);
    QVERIFY(coloursOf(many).size() <= 256);
    constexpr int MostOff = 20;
    for (int pixel = 0; pixel < 128 * 128; ++pixel) {
        const QRgb before = folders.many.pixel(pixel % 128, pixel / 128);
        const QRgb after = many.pixel(pixel % 128, pixel / 128);
        QVERIFY(qAbs(qRed(before) - qRed(after)) <= MostOff);
        QVERIFY(qAbs(qGreen(before) - qGreen(after)) <= MostOff);
        QVERIFY(qAbs(qBlue(before) - qBlue(after)) <= MostOff);
    }
}

void ManualPicturesTest::removesThoseThatAreNamedNoMore() {
    const Folders folders;
    QVERIFY(folders.few.save(folders.laid(u"old.png"_s)));
    QCOMPARE(run({folders.tour, folders.manual}).status, 0);
    QVERIFY(!QFile::exists(folders.laid(u"old.png"_s)));
    QVERIFY(QFile::exists(folders.laid(u"few.png"_s)));
}

void ManualPicturesTest::aPictureThatIsNotThereIsAFailure() {
    const Folders folders;
    QVERIFY(QFile::remove(folders.tour + u"/few.png"_s));
    const Answer answer = run({folders.tour, folders.manual});
    QCOMPARE(answer.status, 1);
    QCOMPARE(answer.errors, folders.tour + u"/few.png is no picture.\n"_s);
    QVERIFY(QFile::exists(folders.laid(u"many.png"_s)));
    QVERIFY(run({folders.tour, folders.tour}).errors.endsWith(u"holds no chapters with pictures.\n"_s));
}

void ManualPicturesTest::explainsItself() {
    const Answer answer = run({});
    QCOMPARE(answer.status, 2);
    QVERIFY(answer.errors.startsWith(u"Usage: pontrel-manual-pictures TOUR MANUAL"_s));
}

QTEST_GUILESS_MAIN(ManualPicturesTest)

#include "ManualPicturesTest.moc"
