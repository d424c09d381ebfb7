#include "paper/PaperSupport.h"
#include "paper/TemplateNames.h"
#include "paper/TemplateRules.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

using namespace pontrel;
using namespace pontrel::paper;

namespace {

QString page() {
    QFile file(QStringLiteral(PONTREL_TEMPLATE_PAGE));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The sections of the page by their headings.
QHash<QString, QString> sections() {
    QHash<QString, QString> made;
    for (const QString& section : page().split(QStringLiteral("\n## ")))
        made.insert(section.section(u'\n', 0, 0), section);
    return made;
}

/// An attribute as the reader knows it: "name", what it takes, "required".
QString told(const AttributeRule& rule) {
    QString text = rule.name;
    if (rule.required)
        text += QStringLiteral(" required");
    if (rule.number)
        text += QStringLiteral(" %1 to %2").arg(rule.least).arg(rule.most);
    for (const QString& choice : rule.choices)
        text += u' ' + choice;
    return text;
}

/// The same out of the rows of a section's table.
QStringList attributesIn(const QString& section) {
    static const QRegularExpression row(QStringLiteral("^\\| `([^`]+)` \\| (.*?) \\| .* \\|$"),
                                        QRegularExpression::MultilineOption);
    static const QRegularExpression range(QStringLiteral("^(\\d+ to \\d+)$"));
    static const QRegularExpression choice(QStringLiteral("`([^`]+)`"));
    QStringList lines;
    auto rows = row.globalMatch(section);
    while (rows.hasNext()) {
        const QRegularExpressionMatch match = rows.next();
        QString line = match.captured(1);
        const QStringList parts = match.captured(2).split(QStringLiteral("; "));
        if (parts.first() == u"required")
            line += QStringLiteral(" required");
        if (const QRegularExpressionMatch found = range.match(parts.last()); found.hasMatch())
            line += u' ' + found.captured(1);
        auto choices = choice.globalMatch(match.captured(2));
        while (choices.hasNext())
            line += u' ' + choices.next().captured(1);
        lines += line;
    }
    return lines;
}

} // namespace

/// The page that tells a site how a template is written.
class TemplateDocTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void thePageTellsEveryElement_data() {
        QTest::addColumn<int>("place");
        for (std::size_t place = 0; place < elementRules().size(); ++place)
            QTest::newRow(qPrintable(elementRules()[place].name)) << static_cast<int>(place);
    }
    void thePageTellsEveryElement() {
        QFETCH(const int, place);
        const ElementRule& rule = elementRules()[static_cast<std::size_t>(place)];
        const QHash<QString, QString> all = sections();
        const QString section = all.value(QStringLiteral("`<%1>`").arg(rule.name));
        QVERIFY(!section.isEmpty());
        QStringList told;
        for (const AttributeRule& attribute : rule.attributes)
            told += ::told(attribute);
        QStringList read = attributesIn(section);
        if (section.contains(QStringLiteral("[every cell](#every-cell)")))
            read += attributesIn(all.value(QStringLiteral("Every cell"))).mid(0, 8);
        QCOMPARE(read, told);
        static const QRegularExpression holds(QStringLiteral("^Holds: (.*)$"),
                                              QRegularExpression::MultilineOption);
        QStringList children;
        for (const QString& child : rule.children)
            children += QStringLiteral("`<%1>`").arg(child);
        QCOMPARE(holds.match(section).captured(1), children.join(QStringLiteral(", ")));
        QCOMPARE(section.contains(QStringLiteral("Takes text")), rule.takesText);
    }

    void itTellsNoElementThatIsNone() {
        QStringList known;
        for (const ElementRule& rule : elementRules())
            known += QStringLiteral("`<%1>`").arg(rule.name);
        for (const QString& heading : sections().keys())
            QVERIFY2(!heading.startsWith(u'`') || known.contains(heading), qPrintable(heading));
    }

    void itTellsEveryNameInBraces() {
        const QString section = sections().value(QStringLiteral("Texts with braces"));
        QStringList names = namedValues() + totalWords();
        for (const char16_t* name : {made::Caption, made::Code, made::Period, made::Today, made::Page,
                                     made::Pages, made::Continued, made::Count})
            names += QString::fromUtf16(name);
        for (const QString& name : names)
            QVERIFY2(section.contains(QStringLiteral("`%1`").arg(name)), qPrintable(name));
    }

    void everyFormatThatTheReaderTakesIsOne() {
        for (const ElementRule& rule : elementRules())
            if (const AttributeRule* format = rule.attribute(u"format"); format && rule.name != u"report")
                for (const QString& name : format->choices)
                    QVERIFY2(formatNamed(name) != Format::Automatic, qPrintable(name));
    }

    void itsExampleIsGood() {
        static const QRegularExpression example(QStringLiteral("```xml\\n(.*?)```"),
                                                QRegularExpression::DotMatchesEverythingOption);
        const QRegularExpressionMatch match = example.match(page());
        QVERIFY(match.hasMatch());
        const Template made = test::templateOf(match.captured(1).toUtf8());
        QCOMPARE(made.code, QStringLiteral("X01"));
        QCOMPARE(made.cells.size(), std::size_t{3});
    }
};

QTEST_GUILESS_MAIN(TemplateDocTest)
#include "TemplateDocTest.moc"
