#include "app/controls/Colors.h"

#include "support/AppSupport.h"

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

using Role = QPalette::ColorRole;
using Pair = std::pair<Role, Role>;
constexpr auto Groups = {QPalette::Active, QPalette::Inactive};

QString nameOf(const QPalette& palette, QPalette::ColorGroup group, Role role) {
    return palette.color(group, role).name();
}

/// Every text and every ground of one colour.
QPalette without(const QColor& color) {
    QPalette palette;
    for (int role = 0; role < QPalette::NColorRoles; ++role)
        palette.setColor(QPalette::All, static_cast<Role>(role), color);
    return palette;
}

} // namespace

/// What becomes of a desktop's colours.
class ColorsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void contrastIsThatOfLuminance();
    void theUsualLightColoursStay();
    void theApplicationHasThem();
    void whatADesktopLeavesPaleIsMended_data();
    void whatADesktopLeavesPaleIsMended();
    void whatCanBeReadStays();
    void darkAndHighContrastAreTold();
    void whatTellsDaysApartIsLegible_data();
    void whatTellsDaysApartIsLegible();
    void linesOfHighContrastAreSeen_data();
    void linesOfHighContrastAreSeen();
};

void ColorsTest::contrastIsThatOfLuminance() {
    QCOMPARE(colors::contrast(Qt::black, Qt::white), 21.0);
    QCOMPARE(colors::contrast(Qt::white, Qt::black), 21.0);
    QCOMPARE(colors::contrast(Qt::red, Qt::red), 1.0);
    QVERIFY(std::abs(colors::contrast(QColor(0x76, 0x76, 0x76), Qt::white) - 4.54) < 0.01);
}

void ColorsTest::theUsualLightColoursStay() {
    const QPalette palette = colors::readable(QApplication::style()->standardPalette());
    for (const auto group : Groups) {
        QCOMPARE(nameOf(palette, group, QPalette::Window), u"#efefef"_s);
        QCOMPARE(nameOf(palette, group, QPalette::Base), u"#ffffff"_s);
        QCOMPARE(nameOf(palette, group, QPalette::Button), u"#efefef"_s);
        for (const auto text : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            QCOMPARE(nameOf(palette, group, text), u"#000000"_s);
        QCOMPARE(nameOf(palette, group, QPalette::Highlight), u"#2a73b0"_s);
        QCOMPARE(nameOf(palette, group, QPalette::HighlightedText), u"#ffffff"_s);
        QCOMPARE(nameOf(palette, group, QPalette::PlaceholderText), u"#6a6a6a"_s);
    }
    QCOMPARE(nameOf(palette, QPalette::Disabled, QPalette::Text), u"#585858"_s);
    QCOMPARE(nameOf(palette, QPalette::Disabled, QPalette::WindowText), u"#585858"_s);
    QCOMPARE(nameOf(palette, QPalette::Disabled, QPalette::ButtonText), u"#bebebe"_s);
    QCOMPARE(nameOf(palette, QPalette::Disabled, QPalette::Highlight), u"#6e6e6e"_s);
}

void ColorsTest::theApplicationHasThem() {
    const QPalette palette = QApplication::palette();
    QCOMPARE(nameOf(palette, QPalette::Active, QPalette::Highlight), u"#2a73b0"_s);
    QCOMPARE(nameOf(palette, QPalette::Disabled, QPalette::Text), u"#585858"_s);
    QVERIFY(!colors::isDark(palette));
    // Not as colours of the program's own, which a desktop could not change any more.
    QCOMPARE(palette.resolveMask(), QPalette::ResolveMask(0));
}

void ColorsTest::whatADesktopLeavesPaleIsMended_data() {
    QTest::addColumn<QPalette>("desktop");
    QTest::addRow("all white") << without(Qt::white);
    QTest::addRow("all black") << without(Qt::black);
    QTest::addRow("all grey") << without(QColor(0x80, 0x80, 0x80));
    QTest::addRow("transparent texts") << [] {
        QPalette palette = colors::darkPalette();
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::PlaceholderText})
            palette.setColor(QPalette::All, role, QColor(255, 255, 255, 60));
        return palette;
    }();
    QTest::addRow("dark") << colors::darkPalette();
    QTest::addRow("white on black") << colors::highContrastPalette(true);
    QTest::addRow("black on white") << colors::highContrastPalette(false);
}

void ColorsTest::whatADesktopLeavesPaleIsMended() {
    QFETCH(const QPalette, desktop);
    const QPalette palette = colors::readable(desktop);
    const auto check = [&](QPalette::ColorGroup group, Role text, Role ground) {
        const double contrast = colors::contrast(palette.color(group, text), palette.color(group, ground));
        QVERIFY2(contrast >= 4.5,
                 qPrintable(u"%1 on %2 in %3: %4"_s.arg(text).arg(ground).arg(group).arg(contrast)));
    };
    for (const auto group : Groups) {
        for (const auto& [text, ground] :
             {Pair(QPalette::WindowText, QPalette::Window), Pair(QPalette::Text, QPalette::Base),
              Pair(QPalette::ButtonText, QPalette::Button), Pair(QPalette::Text, QPalette::AlternateBase),
              Pair(QPalette::ToolTipText, QPalette::ToolTipBase),
              Pair(QPalette::PlaceholderText, QPalette::Base),
              Pair(QPalette::HighlightedText, QPalette::Highlight), Pair(QPalette::Link, QPalette::Base)})
            check(group, text, ground);
    }
    check(QPalette::Disabled, QPalette::Text, QPalette::Base);
    check(QPalette::Disabled, QPalette::Text, QPalette::Button);
    check(QPalette::Disabled, QPalette::WindowText, QPalette::Window);
    check(QPalette::Disabled, QPalette::HighlightedText, QPalette::Highlight);
    const colors::Calendar calendar = colors::calendar(palette);
    QVERIFY(colors::contrast(calendar.groupText, calendar.groupFill) >= 4.5);
}

void ColorsTest::whatCanBeReadStays() {
    QPalette desktop = colors::darkPalette();
    const QColor own(0x00, 0x4c, 0x8a);
    desktop.setColor(QPalette::Highlight, own);
    desktop.setColor(QPalette::Window, QColor(0x30, 0x20, 0x28));
    desktop.setColor(QPalette::Disabled, QPalette::Text, QColor(0xc0, 0xb0, 0xb8));
    const QPalette palette = colors::readable(desktop);
    QCOMPARE(palette.color(QPalette::Active, QPalette::Highlight), own);
    QCOMPARE(palette.color(QPalette::Active, QPalette::Window), QColor(0x30, 0x20, 0x28));
    QCOMPARE(palette.color(QPalette::Disabled, QPalette::Text), QColor(0xc0, 0xb0, 0xb8));
    QCOMPARE(colors::readable(palette), palette);
}

void ColorsTest::darkAndHighContrastAreTold() {
    const QPalette light = QApplication::style()->standardPalette();
    QVERIFY(!colors::isDark(light) && !colors::isHighContrast(light));
    QVERIFY(colors::isDark(colors::darkPalette()) && !colors::isHighContrast(colors::darkPalette()));
    const QPalette black = colors::highContrastPalette(true);
    QVERIFY(colors::isDark(black) && colors::isHighContrast(black));
    const QPalette white = colors::highContrastPalette(false);
    QVERIFY(!colors::isDark(white) && colors::isHighContrast(white));
    QVERIFY(colors::calendar(black).groupFill != colors::calendar(white).groupFill);
}

void ColorsTest::whatTellsDaysApartIsLegible_data() {
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("light") << colors::readable(QApplication::style()->standardPalette());
    QTest::newRow("dark") << colors::readable(colors::darkPalette());
    QTest::newRow("white on black") << colors::readable(colors::highContrastPalette(true));
    QTest::newRow("black on white") << colors::readable(colors::highContrastPalette(false));
}

void ColorsTest::whatTellsDaysApartIsLegible() {
    QFETCH(const QPalette, palette);
    using enum colors::Hue;
    QSet<QString> grounds{palette.color(QPalette::Base).name()};
    for (const auto hue : {Red, Orange, Yellow, Green, Blue, Violet}) {
        const QColor ground = colors::ground(palette, hue);
        grounds << ground.name();
        QVERIFY(colors::contrast(palette.color(QPalette::Text), ground) >= 4.5);
        QVERIFY(colors::contrast(colors::ink(palette, hue), palette.color(QPalette::Base)) >= 3);
    }
    QCOMPARE(grounds.size(), 7);
}

void ColorsTest::linesOfHighContrastAreSeen_data() {
    QTest::addColumn<QPalette>("palette");
    QTest::addColumn<bool>("isSeen");
    QTest::addRow("white on black") << colors::highContrastPalette(true) << true;
    QTest::addRow("black on white") << colors::highContrastPalette(false) << true;
    QTest::addRow("as usual, which stays as it is") << QApplication::style()->standardPalette() << false;
}

void ColorsTest::linesOfHighContrastAreSeen() {
    QFETCH(const QPalette, palette);
    QFETCH(const bool, isSeen);
    QApplication::setPalette(colors::readable(palette));
    const QColor ground = palette.color(QPalette::Window);
    QWidget window;
    const QList<QWidget*> controls{new QLineEdit(&window), new QPushButton(u"一"_s, &window),
                                   new QCheckBox(&window), new QRadioButton(&window),
                                   new QComboBox(&window), new QTableView(&window)};
    int left = 10;
    for (QWidget* each : controls) {
        each->setGeometry(left, 10, 60, 26);
        each->setFocusPolicy(Qt::NoFocus);
        left += 70;
    }
    window.resize(left, 50);
    window.show();
    const QImage picture = window.grab().toImage();
    for (const QWidget* each : controls) {
        // On the way in from the left, through the middle, the line comes first.
        double most = 1;
        for (int x = -2; x < 4; ++x)
            most = std::max(
                most,
                colors::contrast(picture.pixelColor(each->x() + x, each->geometry().center().y()), ground));
        QVERIFY2((most >= 3) == isSeen,
                 qPrintable(u"%1: %2"_s.arg(QString::fromLatin1(each->metaObject()->className())).arg(most)));
    }
    QApplication::setPalette(QPalette());
}

int main(int argc, char** argv) {
    return runTests<ColorsTest>(argc, argv);
}

#include "ColorsTest.moc"
