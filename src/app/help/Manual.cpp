#include "app/help/Manual.h"

#include <QFile>
#include <QRegularExpression>
#include <QTextDocument>

/// The files that are compiled in. Outside the namespace, as Qt asks for.
static void reachManual() {
    Q_INIT_RESOURCE(manual);
}

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

const QString FirstChapter = u"index.md"_s;
constexpr QChar HeadingMark(0x23);
const QString MessageChapter = u"messages.md"_s;

QString textOfFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// A message as a pattern: line ends and blanks count for nothing, marked parts for anything.
QRegularExpression patternOf(const QString& written) {
    static const QRegularExpression varying(u"〈[^〉]*〉"_s);
    QStringList parts;
    for (const QString& part : written.split(varying))
        parts << QRegularExpression::escape(QString(part).remove(QRegularExpression(u"\\s"_s)));
    return QRegularExpression(QRegularExpression::anchoredPattern(parts.join(u".*"_s)));
}

/// Whether the first of two messages, both of which fit, tells more: it leaves nothing open, or it is longer.
bool isCloser(const QString& written, const QString& than) {
    static const QRegularExpression varying(u"〈[^〉]*〉"_s);
    const auto openAndLength = [](const QString& text) {
        return std::pair(text.contains(varying), -QString(text).remove(varying).size());
    };
    return openAndLength(written) < openAndLength(than);
}

bool hasHeading(const Manual::Chapter& chapter, const QString& text) {
    return std::any_of(chapter.headings.begin(), chapter.headings.end(),
                       [&text](const Manual::Heading& heading) { return heading.text == text; });
}

} // namespace

const QString Manual::ProgramFolder = u":/manual"_s;

Manual::Manual(const QString& folder) {
    readChapter(folder, FirstChapter);
    if (chapters_.empty())
        return;
    static const QRegularExpression link(u"\\]\\(([a-z-]+\\.md)\\)"_s);
    const QString index = chapters_.front().markdown;
    for (auto each = link.globalMatch(index); each.hasNext();) {
        const QString name = each.next().captured(1);
        if (find(name) < 0)
            readChapter(folder, name);
    }
    shown_.resize(chapters_.size());
    readPlaces(folder + u"/places.txt"_s);
    readMessages();
}

const Manual& Manual::ofProgram() {
    reachManual();
    static const Manual manual(ProgramFolder);
    return manual;
}

void Manual::readChapter(const QString& path, const QString& name) {
    Chapter chapter{name, {}, textOfFile(path + u'/' + name), {}};
    static const QRegularExpression mark(u"^(\\x23+) +(.*)$"_s);
    bool isCode = false;
    const QStringList lines = chapter.markdown.split(u'\n');
    for (const QString& line : lines) {
        isCode ^= line.startsWith(u"```");
        if (const auto found = mark.match(line); !isCode && found.hasMatch())
            chapter.headings.push_back(
                {static_cast<int>(found.capturedLength(1)), found.captured(2).trimmed()});
    }
    if (chapter.headings.empty())
        return;
    chapter.title = chapter.headings.front().text;
    chapters_.push_back(std::move(chapter));
}

/// One window a line: its object name, a chapter, and a heading where it is not the chapter's own.
void Manual::readPlaces(const QString& path) {
    const QStringList lines = textOfFile(path).split(u'\n', Qt::SkipEmptyParts);
    for (const QString& line : lines)
        places_.insert(line.section(u' ', 0, 0), {line.section(u' ', 1, 1), line.section(u' ', 2).trimmed()});
}

/// The messages stand in the first cells of tables, within quotation marks.
void Manual::readMessages() {
    const int number = find(MessageChapter);
    if (number < 0)
        return;
    QString heading;
    const QStringList lines = chapters_[static_cast<std::size_t>(number)].markdown.split(u'\n');
    for (const QString& line : lines) {
        if (line.startsWith(HeadingMark))
            heading = line.section(u' ', 1).trimmed();
        else if (line.startsWith(u"| “") && line.contains(u"” |"))
            messages_.push_back({line.section(u"| “"_s, 1).section(u"” |"_s, 0, 0), heading});
    }
}

int Manual::find(const QString& chapter) const {
    const auto found = std::find_if(chapters_.begin(), chapters_.end(),
                                    [&chapter](const Chapter& each) { return each.name == chapter; });
    return found == chapters_.end() ? -1 : static_cast<int>(found - chapters_.begin());
}

const QString& Manual::shownText(int chapter) const {
    const auto number = static_cast<std::size_t>(chapter);
    QString& text = shown_[number];
    if (text.isNull()) {
        QTextDocument document;
        document.setMarkdown(chapters_[number].markdown);
        text = document.toPlainText();
    }
    return text;
}

HelpPlace Manual::ownPlace(const QString& objectName, const QString& title) const {
    if (const auto place = places_.constFind(objectName); place != places_.cend())
        return *place;
    for (const Chapter& chapter : chapters_) {
        if (!title.isEmpty() && hasHeading(chapter, title))
            return {chapter.name, title == chapter.title ? QString() : title};
    }
    return {};
}

bool Manual::knowsWindow(const QString& objectName, const QString& title) const {
    return !ownPlace(objectName, title).chapter.isEmpty();
}

HelpPlace Manual::placeOfWindow(const QString& objectName, const QString& title,
                                const QStringList& tabs) const {
    HelpPlace place = ownPlace(objectName, title);
    const int number = find(place.chapter);
    if (number < 0)
        return {FirstChapter};
    for (const QString& tab : tabs) {
        if (hasHeading(chapters_[static_cast<std::size_t>(number)], tab))
            place.heading = tab;
    }
    return place;
}

HelpPlace Manual::placeOfMessage(const QString& message) const {
    // A message of several lines may hold one that is explained by itself.
    QStringList texts = message.split(u'\n', Qt::SkipEmptyParts);
    texts << message;
    static const QRegularExpression blanks(u"\\s"_s);
    texts.replaceInStrings(blanks, QString());
    const Message* best = nullptr;
    for (const Message& each : messages_) {
        const QRegularExpression pattern = patternOf(each.written);
        if ((!best || isCloser(each.written, best->written)) &&
            std::any_of(texts.begin(), texts.end(),
                        [&pattern](const QString& text) { return pattern.match(text).hasMatch(); }))
            best = &each;
    }
    return best ? HelpPlace{MessageChapter, best->heading, best->written} : HelpPlace{MessageChapter};
}

} // namespace pontrel
