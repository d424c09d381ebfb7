#include "support/TestStore.h"
#include "windows/help/HelpFixture.h"

#include <QComboBox>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QGroupBox>
#include <QHeaderView>
#include <QImage>
#include <QPushButton>
#include <QRegularExpression>
#include <QTableView>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QString ManualFolder = QStringLiteral(PONTREL_MANUAL);
const QString SourceFolder = QStringLiteral(PONTREL_SOURCES);

/// Files whose controls stand in windows that the walk does not open; their literals count as captions.
const QStringList UnwalkedSources{u"windows/reports/ReportPreview_controls.cpp"_s, u"app/Prompts.cpp"_s,
                                  u"app/controls/TDBCalendar.cpp"_s, u"app/SystemMenu.cpp"_s,
                                  u"../tools/setup/SetupDialog.cpp"_s};

/// Titles of message boxes, which stand beside the messages; and a list's entry that ends as messages do.
const QStringList NoMessages{u"警告訊息"_s, u"錯誤訊息"_s, u"異常警告"_s,
                             u"確認刪除"_s, u"登入"_s,     u"列印"_s,
                             u"另存新檔"_s, u"查詢"_s,     u"上午4 小時,下午4小時!"_s};

QString textOfFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s cannot be read", qPrintable(path));
    return QString::fromUtf8(file.readAll());
}

/// A caption as it is compared: blanks, access keys, the colon at its end and line ends count for nothing.
QString plain(QString caption) {
    static const QRegularExpression accessKey(u"\\(&.\\)"_s);
    static const QRegularExpression blanks(u"\\s"_s);
    caption.remove(accessKey).remove(u'&').remove(blanks);
    while (caption.endsWith(u':') || caption.endsWith(QChar(0xff1a)))
        caption.chop(1);
    return caption;
}

/// What stands between the marks, also where pairs of them stand within.
QStringList quoted(const QString& text, QChar begin, QChar end) {
    QStringList found;
    int depth = 0;
    qsizetype from = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text[at] == begin && depth++ == 0)
            from = at + 1;
        else if (text[at] == end && depth > 0 && --depth == 0)
            found << text.mid(from, at - from);
    }
    return found;
}

/// The captions that the windows show.
class Captions {
  public:
    void add(const QString& caption) { all_ << plain(caption); }
    void addAll(const QWidget& window) {
        addWidget(window);
        for (const QWidget* widget : window.findChildren<QWidget*>())
            addWidget(*widget);
    }
    [[nodiscard]] bool has(const QString& caption) const { return all_.contains(plain(caption)); }
    [[nodiscard]] qsizetype count() const { return all_.size(); }

  private:
    void addWidget(const QWidget& widget) {
        for (const QString& text : {widget.windowTitle(), widget.toolTip(), widget.accessibleName()})
            add(text);
        if (const auto* label = qobject_cast<const QLabel*>(&widget))
            add(label->text());
        else if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
            add(button->text());
        else if (const auto* group = qobject_cast<const QGroupBox*>(&widget))
            add(group->title());
        else if (const auto* list = qobject_cast<const QComboBox*>(&widget))
            for (int entry = 0; entry < list->count(); ++entry)
                add(list->itemText(entry));
        else if (const auto* tabs = qobject_cast<const QTabWidget*>(&widget))
            for (int tab = 0; tab < tabs->count(); ++tab)
                add(tabs->tabText(tab));
        else if (const auto* table = qobject_cast<const QTableView*>(&widget); table && table->model())
            for (int column = 0; column < table->model()->columnCount(); ++column)
                add(table->model()->headerData(column, Qt::Horizontal).toString());
    }

    QSet<QString> all_;
};

/// The literals in a source, those that stand one behind the other joined.
QStringList literalsOf(QString source) {
    static const QRegularExpression lineComment(u"^\\s*///?.*$"_s, QRegularExpression::MultilineOption);
    static const QRegularExpression joint(u"\"\\s*\\n\\s*u?\""_s);
    static const QRegularExpression literal(u"\"((?:[^\"\\\\\\n]|\\\\.)*)\""_s);
    source.remove(lineComment).remove(joint);
    QStringList literals;
    for (auto each = literal.globalMatch(source); each.hasNext();)
        literals << each.next().captured(1);
    return literals;
}

/// The parts of a literal that are always shown as they stand, whatever the lines are that they stand on.
QStringList fixedParts(QString literal) {
    static const QRegularExpression varying(u"%L?[0-9]"_s);
    literal.remove(u"\\n"_s).replace(varying, u"\n"_s);
    QStringList parts;
    for (const QString& part : literal.split(u'\n', Qt::SkipEmptyParts)) {
        if (const QString text = plain(part); !text.isEmpty())
            parts << text;
    }
    return parts;
}

bool hasHan(const QString& text) {
    static const QRegularExpression han(u"\\p{Han}"_s);
    return han.match(text).hasMatch();
}

QStringList sourceFiles() {
    QStringList files;
    for (const QString& folder : {QString(), u"/../tools/setup"_s}) {
        QDirIterator each(SourceFolder + folder, {u"*.cpp"_s, u"*.h"_s}, QDir::Files,
                          QDirIterator::Subdirectories);
        while (each.hasNext())
            files << each.next();
    }
    files.sort();
    return files;
}

/// What stands in the brackets behind the name of a routine, for every call of it.
QStringList callsOf(const QString& routine, const QString& source) {
    QStringList calls;
    const QRegularExpression name(u"\\b"_s + routine + u"\\("_s);
    for (auto each = name.globalMatch(source); each.hasNext();) {
        const qsizetype from = each.next().capturedEnd();
        int depth = 1;
        bool isText = false;
        qsizetype at = from;
        for (; at < source.size() && depth > 0; ++at) {
            if (source[at] == u'"' && source[at - 1] != u'\\')
                isText = !isText;
            else if (!isText && source[at] == u'(')
                ++depth;
            else if (!isText && source[at] == u')')
                --depth;
        }
        calls << source.mid(from, at - from);
    }
    return calls;
}

/// The messages of the program, as literals: what its routines for messages are called with, the texts of
/// run-time errors, and whatever else ends as a message does. The faults of templates, which only their
/// authors meet, stand in docs/report-templates.md.
QStringList messagesInSources() {
    static const QRegularExpression ending(u"([!?！？]|\\.\\.\\.+|請重新輸入|程式設計師)$"_s);
    QStringList messages;
    for (const QString& file : sourceFiles()) {
        if (file.contains(u"/paper/Template") || file.contains(u"/help/"))
            continue;
        const QString source = textOfFile(file);
        QStringList texts;
        for (const QString& routine : {u"MsgBox"_s, u"tell"_s, u"confirm"_s, u"refuseBatch"_s, u"inputBox"_s,
                                       u"RunTimeError"_s, u"fail"_s}) {
            for (const QString& call : callsOf(routine, source))
                texts << literalsOf(call);
        }
        if (file.endsWith(u"/RunTimeError.cpp") || file.endsWith(u"/FirstStart.cpp"))
            texts << literalsOf(source);
        for (const QString& literal : literalsOf(source)) {
            if (literal.size() > 5 && ending.match(literal).hasMatch())
                texts << literal;
        }
        for (const QString& text : texts) {
            if (hasHan(text) && !NoMessages.contains(text))
                messages << text;
        }
    }
    messages.removeDuplicates();
    return messages;
}

const std::vector<Manual::Chapter>& chapters() {
    return Manual::ofProgram().chapters();
}

const Manual::Chapter& chapter(const QString& name) {
    return chapters().at(static_cast<std::size_t>(Manual::ofProgram().find(name)));
}

/// The text between a heading and the next one of its level or above.
QString sectionOf(const Manual::Chapter& chapter, const QString& heading) {
    QString section;
    int level = 0;
    for (const QString& line : chapter.markdown.split(u'\n')) {
        const auto marks = static_cast<int>(line.indexOf(u' '));
        const bool isHeading = line.startsWith(u'#');
        if (isHeading && level > 0 && marks <= level)
            break;
        if (isHeading && line.mid(marks).trimmed() == heading)
            level = marks;
        else if (level > 0)
            section += line + u'\n';
    }
    return section;
}

/// Runs the routine at every page of every window, in each of its states, and for every dialog.
void walk(const std::function<void(QWidget& window, const QString& page)>& look) {
    const TestStore store;
    const Shell shell(store);
    registerWindows();
    look(*gMDI, QString());
    PromptAnswers answers;
    for (const EveryWindow& each : everyWindow()) {
        each.open();
        inEveryState(
            *each.opened(), [&](const QString& place, bool /*isEdit*/) { look(*each.opened(), place); },
            &answers);
        each.opened()->unload();
    }
    for (const EveryDialog& each : everyDialog()) {
        answers.expect(each.objectName, [&look, &each](QWidget& dialog) {
            look(dialog, each.title);
            closeDialog(dialog);
        });
        each.show();
    }
    HelpWindow::open({u"index.md"_s});
    look(*HelpWindow::current(), QString());
    closeHelp();
}

} // namespace

/// The manual against the program: what it names is there, and what is there it tells of.
class ManualTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void everyFileIsAChapter();
    void headingsAreToldApart();
    void everyLinkAndPictureIsThere();
    void everyPictureIsUsed();
    void everyWindowHasItsPlaceAndEveryTabItsPicture();
    void everyCaptionIsOneOfAWindow();
    void everyMessageIsOneOfTheProgram();
    void everyMessageOfTheProgramIsExplained();
    void marksComeInPairs();
    void theGlossaryNamesWhatIsThere();
};

void ManualTest::everyFileIsAChapter() {
    QStringList files = QDir(ManualFolder).entryList({u"*.md"_s}, QDir::Files, QDir::Name);
    QStringList names;
    for (const Manual::Chapter& each : chapters()) {
        names << each.name;
        QCOMPARE(each.markdown, textOfFile(ManualFolder + u'/' + each.name)); // what is compiled in
    }
    QCOMPARE(names.constFirst(), u"index.md"_s);
    names.sort();
    QVERIFY(names.size() > 10);
    QCOMPARE(names, files);
}

void ManualTest::headingsAreToldApart() {
    for (const Manual::Chapter& each : chapters()) {
        QSet<QString> headings;
        for (const Manual::Heading& heading : each.headings) {
            QVERIFY2(!headings.contains(heading.text), qPrintable(each.name + u": "_s + heading.text));
            headings << heading.text;
        }
        QCOMPARE(each.headings.front().level, 1);
    }
}

void ManualTest::everyLinkAndPictureIsThere() {
    static const QRegularExpression link(u"(!?)\\[[^\\]]*\\]\\(([^)]*)\\)"_s);
    int links = 0;
    for (const Manual::Chapter& each : chapters()) {
        for (auto found = link.globalMatch(each.markdown); found.hasNext(); ++links) {
            const auto match = found.next();
            const QString target = match.captured(2);
            const QString told = each.name + u": "_s + target;
            if (!match.captured(1).isEmpty()) {
                QVERIFY2(target.startsWith(u"pictures/"), qPrintable(told));
                QVERIFY2(!QImage(Manual::ProgramFolder + u'/' + target).isNull(), qPrintable(told));
                continue;
            }
            const QString name = target.section(u'#', 0, 0);
            const int number =
                name.isEmpty() ? Manual::ofProgram().find(each.name) : Manual::ofProgram().find(name);
            QVERIFY2(number >= 0, qPrintable(told));
            const QString heading = target.section(u'#', 1);
            const auto& headings = chapters().at(static_cast<std::size_t>(number)).headings;
            QVERIFY2(heading.isEmpty() || std::any_of(headings.begin(), headings.end(),
                                                      [&](const auto& one) { return one.text == heading; }),
                     qPrintable(told));
        }
        QVERIFY2(!each.markdown.contains(u"http"), qPrintable(each.name));
    }
    QVERIFY(links > 40);
}

void ManualTest::everyPictureIsUsed() {
    QString all;
    for (const Manual::Chapter& each : chapters())
        all += each.markdown;
    const auto pictures = QDir(ManualFolder + u"/pictures"_s).entryList({u"*.png"_s}, QDir::Files);
    QVERIFY(pictures.size() > 40);
    for (const QString& picture : pictures)
        QVERIFY2(all.contains(u"(pictures/"_s + picture + u')'), qPrintable(picture));
}

void ManualTest::everyWindowHasItsPlaceAndEveryTabItsPicture() {
    const Manual& manual = Manual::ofProgram();
    QSet<QString> tabs;
    walk([&](QWidget& window, const QString& page) {
        QVERIFY2(window.objectName() == u"MsgBox" ||
                     manual.knowsWindow(window.objectName(), window.windowTitle()),
                 qPrintable(window.objectName() + u' ' + window.windowTitle()));
        if (!window.objectName().startsWith(u"Form") || !page.contains(u'/'))
            return;
        const HelpPlace place = manual.placeOfWindow(window.objectName(), window.windowTitle(), {});
        const QString tab = page.section(u'/', 1, 1);
        const QString section = sectionOf(chapter(place.chapter), tab);
        QVERIFY2(section.size() > 60, qPrintable(page));
        QVERIFY2(section.contains(u"](pictures/"), qPrintable(page));
        tabs << window.objectName() + u'/' + tab;
    });
    QCOMPARE(tabs.size(), 33);
    // The pages within the tab of employees, which are to be chosen only while one is being edited.
    for (const QString& page : {u"一般"_s, u"請假"_s, u"通訊"_s, u"考試經歷"_s, u"網頁"_s})
        QVERIFY2(sectionOf(chapter(u"master.md"_s), page).size() > 30, qPrintable(page));
}

void ManualTest::everyCaptionIsOneOfAWindow() {
    Captions captions;
    walk([&captions](QWidget& window, const QString& /*page*/) { captions.addAll(window); });
    for (const QString& source : UnwalkedSources) {
        for (const QString& literal : literalsOf(textOfFile(SourceFolder + u'/' + source)))
            captions.add(literal);
    }
    QVERIFY(captions.count() > 300);
    QVERIFY(!captions.has(u"沒有這個按鈕"_s));
    QStringList unknown;
    for (const Manual::Chapter& each : chapters()) {
        static const QRegularExpression message(u"“[^”]*”"_s);
        for (const QString& caption : quoted(QString(each.markdown).remove(message), u'「', u'」')) {
            if (!captions.has(caption))
                unknown << each.name + u": "_s + caption;
        }
    }
    QVERIFY2(unknown.isEmpty(), qPrintable(unknown.join(u'\n')));
}

void ManualTest::everyMessageIsOneOfTheProgram() {
    QSet<QString> parts;
    for (const QString& file : sourceFiles()) {
        for (const QString& literal : literalsOf(textOfFile(file))) {
            for (const QString& part : fixedParts(literal))
                parts << part;
        }
    }
    static const QRegularExpression varying(u"〈[^〉]*〉"_s);
    int messages = 0;
    QStringList unknown;
    for (const Manual::Chapter& each : chapters()) {
        for (const QString& message : quoted(each.markdown, u'“', u'”')) {
            ++messages;
            for (const QString& part : message.split(varying, Qt::SkipEmptyParts)) {
                if (!parts.contains(plain(part)))
                    unknown << each.name + u": "_s + message;
            }
        }
    }
    QVERIFY2(unknown.isEmpty(), qPrintable(unknown.join(u'\n')));
    QVERIFY(messages > 50);
}

void ManualTest::everyMessageOfTheProgramIsExplained() {
    static const QRegularExpression varying(u"〈[^〉]*〉"_s);
    QSet<QString> explained;
    for (const QString& message : quoted(chapter(u"messages.md"_s).markdown, u'“', u'”')) {
        for (const QString& part : message.split(varying, Qt::SkipEmptyParts))
            explained << plain(part);
    }
    const auto isExplained = [&explained](const QString& message) {
        const QStringList parts = fixedParts(message);
        return !Manual::ofProgram().placeOfMessage(QString(message).remove(u"\\n"_s)).text.isEmpty() ||
               std::all_of(parts.begin(), parts.end(), [&explained](const QString& part) {
                   return !hasHan(part) || explained.contains(part);
               });
    };
    const QStringList messages = messagesInSources();
    QVERIFY(messages.size() > 50);
    QVERIFY(messages.contains(u"是否繼續轉入原始打卡資料檔?"_s));
    QVERIFY(messages.contains(u"代碼重複,資料無法存檔"_s));
    QVERIFY(!isExplained(u"沒有這則訊息!"_s));
    QStringList missing;
    for (const QString& message : messages) {
        if (!isExplained(message))
            missing << message;
    }
    QVERIFY2(missing.isEmpty(), qPrintable(missing.join(u'\n')));
}

void ManualTest::marksComeInPairs() {
    for (const Manual::Chapter& each : chapters()) {
        for (const QString& pair : {u"「」"_s, u"“”"_s, u"〈〉"_s, u"『』"_s}) {
            for (const QString& line : each.markdown.split(u'\n'))
                QVERIFY2(line.count(pair[0]) == line.count(pair[1]), qPrintable(each.name + u": "_s + line));
        }
    }
}

void ManualTest::theGlossaryNamesWhatIsThere() {
    static const QRegularExpression code(u"`([A-Za-z0-9_:.()/]+)`"_s);
    QString sources;
    for (const QString& file : sourceFiles())
        sources += textOfFile(file) + file;
    int names = 0;
    QStringList unknown;
    for (auto each = code.globalMatch(textOfFile(QStringLiteral(PONTREL_GLOSSARY))); each.hasNext();
         ++names) {
        // A column stands apart from its table in the sources, and of a family its first without a number.
        for (const QString& part : each.next().captured(1).remove(u"()"_s).split(u'.')) {
            static const QRegularExpression number(u"[0-9]$"_s);
            if (!sources.contains(part) && !sources.contains(u'"' + QString(part).remove(number)))
                unknown << part;
        }
    }
    QVERIFY2(unknown.isEmpty(), qPrintable(unknown.join(u'\n')));
    QVERIFY(names > 80);
}

int main(int argc, char** argv) {
    return runTests<ManualTest>(argc, argv);
}

#include "ManualTest.moc"
