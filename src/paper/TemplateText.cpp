#include "paper/TemplateText.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <QXmlStreamReader>

namespace pontrel::paper {

namespace {

constexpr qint64 MostBytes = 1024 * 1024;
constexpr int MostDepth = 16;

QByteArray contentOf(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists())
        throw RunTimeError(error::FileNotFound, QStringLiteral("找不到檔案：%1").arg(path));
    QFile file(path);
    // A pipe in its place would never end.
    if (!info.isFile() || !file.open(QIODevice::ReadOnly))
        throw RunTimeError(error::FileAccess, QStringLiteral("無法讀取檔案：%1").arg(path),
                           info.isFile() ? file.errorString() : QStringLiteral("not a regular file"));
    // One byte more than there may be tells a file that is too large.
    QByteArray content = file.read(MostBytes + 1);
    if (file.error() != QFileDevice::NoError)
        throw RunTimeError(error::FileAccess, QStringLiteral("無法讀取檔案：%1").arg(path),
                           file.errorString());
    return content;
}

QString broken(const QXmlStreamReader& reader) {
    switch (reader.error()) {
    case QXmlStreamReader::PrematureEndOfDocumentError:
        return QStringLiteral("檔案在此結束，還有元素沒有關閉");
    case QXmlStreamReader::NotWellFormedError:
        return QStringLiteral("XML 寫法有誤（%1）").arg(reader.errorString());
    default:
        return QStringLiteral("XML 無法讀取（%1）").arg(reader.errorString());
    }
}

bool isBlank(QChar character) {
    return character == u' ' || character == u'\t' || character == u'\n';
}

/// The names' places in the text of a start tag that is known to be well formed.
void placeAttributes(XmlElement& element, QStringView text) {
    qsizetype at = element.offset + 1 + element.name.size();
    for (XmlAttribute& attribute : element.attributes) {
        while (at < text.size() && isBlank(text[at]))
            ++at;
        attribute.offset = at;
        while (at < text.size() && text[at] != u'"' && text[at] != u'\'') // no statement
            ++at;
        if (at < text.size())
            at = text.indexOf(text[at], at + 1) + 1;
    }
}

/// Cuts the text into elements.
class Cutter {
  public:
    Cutter(const TemplateText& source, const QString& text) : source_(source), text_(text), reader_(text) {
        reader_.setNamespaceProcessing(false);
    }

    XmlElement run() {
        for (;;) {
            switch (next()) {
            case QXmlStreamReader::StartElement: {
                XmlElement root = element(0);
                while (!reader_.atEnd())
                    next();
                return root;
            }
            case QXmlStreamReader::EndDocument:
                source_.fail(text_.size(), QStringLiteral("檔案是空的"));
            default:
                break;
            }
        }
    }

  private:
    QXmlStreamReader::TokenType next() {
        before_ = reader_.characterOffset();
        const QXmlStreamReader::TokenType token = reader_.readNext();
        if (token == QXmlStreamReader::Invalid)
            source_.fail(reader_.characterOffset(), broken(reader_));
        if (token == QXmlStreamReader::DTD || token == QXmlStreamReader::EntityReference)
            source_.fail(text_.indexOf(QStringLiteral("<!DOCTYPE")),
                         QStringLiteral("不可有 DOCTYPE 與自訂實體"));
        return token;
    }

    /// The element whose start tag has just been read.
    XmlElement element(int depth) {
        XmlElement made;
        made.name = reader_.name().toString();
        // The reader may have looked at what follows the tag, but the tag stands whole before its place.
        made.offset = qMax<qsizetype>(
            0, text_.lastIndexOf(u'<' + made.name, reader_.characterOffset() - 1 - made.name.size()));
        if (depth == MostDepth)
            source_.fail(made.offset, QStringLiteral("元素的層數過多"));
        for (const QXmlStreamAttribute& attribute : reader_.attributes())
            made.attributes.push_back({attribute.name().toString(), attribute.value().toString(), 0});
        placeAttributes(made, text_);
        made.textOffset = reader_.characterOffset();
        for (;;) {
            switch (next()) {
            case QXmlStreamReader::StartElement:
                made.children.push_back(element(depth + 1));
                break;
            case QXmlStreamReader::Characters:
                addText(made);
                break;
            case QXmlStreamReader::EndElement:
                made.text = made.text.trimmed();
                return made;
            default:
                break;
            }
        }
    }

    void addText(XmlElement& made) {
        const QStringView more = reader_.text();
        if (made.text.isEmpty()) {
            qsizetype blanks = 0;
            while (blanks < more.size() && more[blanks].isSpace())
                ++blanks;
            if (blanks == more.size())
                return;
            made.textOffset = before_ + blanks;
        }
        made.text += more;
    }

    const TemplateText& source_;
    const QString& text_;
    QXmlStreamReader reader_;
    qsizetype before_ = 0; ///< Where the present token begins.
};

} // namespace

TemplateFault::TemplateFault(const QString& file, int line, int column, const QString& what)
    : RunTimeError(error::FaultyFile,
                   QStringLiteral("%1 第 %2 行第 %3 字：%4").arg(file).arg(line).arg(column).arg(what))
    , line_(line)
    , column_(column) {}

const XmlAttribute* XmlElement::attribute(QStringView wanted) const {
    for (const XmlAttribute& candidate : attributes)
        if (candidate.name == wanted)
            return &candidate;
    return nullptr;
}

const XmlElement* XmlElement::child(QStringView wanted) const {
    for (const XmlElement& candidate : children)
        if (candidate.name == wanted)
            return &candidate;
    return nullptr;
}

QString XmlElement::value(QStringView wanted) const {
    const XmlAttribute* found = attribute(wanted);
    return found ? found->value : QString();
}

TemplateText::TemplateText(const QString& path) : TemplateText(QFileInfo(path).fileName(), contentOf(path)) {}

TemplateText::TemplateText(const QString& name, const QByteArray& content) : name_(name) {
    if (content.size() > MostBytes)
        fail(0, QStringLiteral("檔案超過 1 MB"));
    QStringDecoder decoder(QStringDecoder::Utf8);
    text_ = decoder(content);
    if (decoder.hasError())
        fail(text_.indexOf(QChar::ReplacementCharacter), QStringLiteral("不是 UTF-8 編碼"));
    text_.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

XmlElement TemplateText::parse() const {
    return Cutter(*this, text_).run();
}

void TemplateText::fail(qsizetype offset, const QString& what) const {
    const QStringView before = QStringView(text_).left(qBound<qsizetype>(0, offset, text_.size()));
    const auto line = before.count(u'\n') + 1;
    const auto column = before.size() - (before.lastIndexOf(u'\n') + 1) + 1;
    throw TemplateFault(name_, static_cast<int>(line), static_cast<int>(column), what);
}

QString listed(const QStringList& names) {
    return names.join(u'、');
}

} // namespace pontrel::paper
