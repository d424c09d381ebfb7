#include "paper/TemplateBody.h"

#include <algorithm>
#include <cmath>

namespace pontrel::paper {

namespace {

constexpr std::size_t MostCells = 100;
constexpr int LeastFlowWidth = 500;

int hundredths(const QString& millimetres) {
    return static_cast<int>(std::lround(millimetres.toDouble() * 100));
}

int wholeNumber(const QString& text) {
    return static_cast<int>(std::lround(text.toDouble()));
}

QString shown(int length) {
    return QString::number(length / 100.0);
}

Total totalNamed(const QString& name) {
    return name == u"sum"     ? Total::Sum
           : name == u"count" ? Total::Count
           : name == u"min"   ? Total::Min
           : name == u"max"   ? Total::Max
                              : Total::Distinct;
}

class BodyReader {
  public:
    BodyReader(const TemplateText& source, TemplateNames& names, Template& made)
        : source_(source), names_(names), made_(made) {}

    void run(const XmlElement& root) {
        const XmlElement* body = nullptr;
        for (const XmlElement& child : root.children)
            if (child.name == u"columns" || child.name == u"card" || child.name == u"flow") {
                if (body)
                    source_.fail(child.offset, QStringLiteral("<columns>、<card>、<flow> 只能有一個"));
                body = &child;
            }
        if (!body)
            source_.fail(root.offset, QStringLiteral("<report> 缺少 <columns>、<card> 或 <flow>"));
        if (body->children.empty() || body->children.size() > MostCells)
            source_.fail(body->offset,
                         QStringLiteral("<%1> 要有 1 到 %2 個元素").arg(body->name).arg(MostCells));
        if (body->name == u"columns")
            columns(*body);
        else if (body->name == u"card")
            card(*body);
        else
            flow(*body);
    }

  private:
    void columns(const XmlElement& element) {
        made_.stripes = element.value(u"stripes") == u"yes";
        if (element.value(u"summary") == u"yes")
            summary(element);
        int left = 0;
        for (const XmlElement& child : element.children) {
            Cell made = cell(child);
            made.left = left;
            made.width = hundredths(child.value(u"width"));
            made.once = child.attribute(u"once") != nullptr;
            if (made.once && made_.groups.empty())
                source_.fail(child.attribute(u"once")->offset, QStringLiteral("once 要有 <group>"));
            if (const XmlAttribute* total = child.attribute(u"total"))
                addTotal(made, *total);
            left += made.width;
            made_.cells.push_back(std::move(made));
        }
        if (left > made_.contentWidth())
            source_.fail(element.offset, QStringLiteral("各欄共寬 %1 mm，紙上只有 %2 mm")
                                             .arg(shown(left), shown(made_.contentWidth())));
    }

    void summary(const XmlElement& element) {
        made_.rows = RowKind::Summary;
        if (made_.groups.empty())
            source_.fail(element.offset, QStringLiteral("summary 要有 <group>"));
        const Group& last = made_.groups.back();
        if (last.hasHeader || last.hasFooter || last.newPage)
            source_.fail(
                element.offset,
                QStringLiteral("summary 時最內的 <group> 只印一行，不可有 <header>、<footer>、new-page"));
    }

    void card(const XmlElement& element) {
        made_.rows = RowKind::Card;
        made_.across = wholeNumber(element.value(u"across"));
        made_.captionWidth = hundredths(element.value(u"caption-width"));
        const int slot = made_.contentWidth() / qMax(1, made_.across);
        if (made_.captionWidth + 300 > slot)
            source_.fail(element.offset,
                         QStringLiteral("一格只有 %1 mm，放不下 caption-width").arg(shown(slot)));
        int place = 0;
        int line = 0;
        for (const XmlElement& child : element.children) {
            Cell made = cell(child);
            const XmlAttribute* given = child.attribute(u"span");
            const int span = given ? wholeNumber(given->value) : 1;
            if (span > made_.across)
                source_.fail(given->offset, QStringLiteral("span 不可大於 across"));
            if (place + span > made_.across) {
                place = 0;
                ++line;
            }
            made.left = place * slot;
            made.width = span * slot;
            made.line = line;
            place += span;
            made_.cells.push_back(std::move(made));
        }
        made_.lines = line + 1;
    }

    void flow(const XmlElement& element) {
        made_.rows = RowKind::Flow;
        made_.across = wholeNumber(element.value(u"across"));
        const int width = made_.contentWidth() / qMax(1, made_.across);
        if (width < LeastFlowWidth)
            source_.fail(
                element.offset,
                QStringLiteral("一格只有 %1 mm，至少要 %2 mm").arg(shown(width), shown(LeastFlowWidth)));
        for (const XmlElement& child : element.children) {
            Cell made = cell(child);
            if (wraps(made.fit))
                source_.fail(child.offset,
                             QStringLiteral("<flow> 裡不可用 fit=\"%1\"").arg(child.value(u"fit")));
            if (!child.attribute(u"align"))
                made.align = Align::Center;
            made.width = width;
            made.line = static_cast<int>(made_.cells.size());
            made_.cells.push_back(std::move(made));
        }
        made_.lines = static_cast<int>(made_.cells.size());
    }

    /// What columns, fields of cards and cells of flows have in common.
    Cell cell(const XmlElement& element) {
        Cell made;
        made.caption = element.value(u"caption");
        made.savedAs = element.value(u"saved-as");
        made.zeroBlank = element.value(u"zero") == u"blank";
        made.empty = element.value(u"empty");
        const QString fit = element.value(u"fit");
        made.fit = fit == u"wrap"          ? Fit::Wrap
                   : fit == u"shrink"      ? Fit::Shrink
                   : fit == u"shrink-wrap" ? Fit::ShrinkWrap
                                           : Fit::Cut;
        if (const XmlAttribute* when = element.attribute(u"when")) {
            made.when = names_.field(when->value.trimmed(), when->offset);
            const ColumnType type = made_.field(made.when).type();
            if (type != ColumnType::Boolean && !isNumber(type))
                source_.fail(when->offset, QStringLiteral("when 要是或否的欄位"));
        }
        content(element, made);
        format(element, made);
        align(element, made);
        return made;
    }

    void content(const XmlElement& element, Cell& made) {
        made.pieces = names_.pieces(element.text, element.textOffset, TextPlace::Cell);
        if (made.pieces.empty())
            source_.fail(element.offset, QStringLiteral("<%1> 沒有內容").arg(element.name));
        std::vector<int> fields;
        for (std::size_t index = 0; index < made.pieces.size(); ++index) {
            const Piece& piece = made.pieces[index];
            const bool plus =
                index % 2 == 1 && piece.kind == Piece::Kind::Literal && piece.text.trimmed() == u"+";
            if (piece.kind == Piece::Kind::Field && index % 2 == 0)
                fields.push_back(piece.index);
            else if (!plus)
                return;
        }
        if (made.pieces.size() % 2 == 0)
            return;
        if (fields.size() == 1 && element.text.contains(u':'))
            source_.fail(element.textOffset, QStringLiteral("只有一個欄位時，格式寫在 format 或 words"));
        for (const int field : fields)
            if (fields.size() > 1 && !isNumber(made_.field(field).type()))
                source_.fail(element.textOffset,
                             QStringLiteral("欄位 %1 不是數字，不能相加").arg(made_.field(field).name()));
        made.fields = std::move(fields);
        made.pieces.clear();
    }

    void format(const XmlElement& element, Cell& made) {
        const XmlAttribute* format = element.attribute(u"format");
        const XmlAttribute* words = element.attribute(u"words");
        const XmlAttribute* given = words ? words : format;
        if (words && format)
            source_.fail(format->offset, QStringLiteral("format 與 words 只能有一個"));
        if (made.fields.empty()) {
            if (given)
                source_.fail(given->offset,
                             QStringLiteral("%1 要一個欄位；在文字裡寫成 {表.欄位:格式}").arg(given->name));
            return;
        }
        const ColumnType type = made_.field(made.fields.front()).type();
        made.format = words ? Format::Words : format ? formatNamed(format->value) : formatFor(type);
        if (words)
            made.words = words->value.split(u'|');
        if (!accepts(made.format, type))
            source_.fail(given->offset, QStringLiteral("%1 不合欄位 %2 的型態")
                                            .arg(given->name, made_.field(made.fields.front()).name()));
    }

    void align(const XmlElement& element, Cell& made) {
        const QString given = element.value(u"align");
        const ColumnType type =
            made.fields.empty() ? ColumnType::Text : made_.field(made.fields.front()).type();
        if (!given.isEmpty())
            made.align = given == u"left" ? Align::Left : given == u"right" ? Align::Right : Align::Center;
        else if (isNumber(type) && made.format != Format::Words)
            made.align = Align::Right;
        else if (type != ColumnType::Text)
            made.align = Align::Center;
    }

    void addTotal(Cell& made, const XmlAttribute& given) {
        made.total = totalNamed(given.value);
        if (made.fields.empty())
            source_.fail(given.offset, QStringLiteral("total 要一個欄位"));
        const ColumnType type = made_.field(made.fields.front()).type();
        const bool reckoned = made.total == Total::Sum;
        const bool compared = made.total == Total::Min || made.total == Total::Max;
        if ((reckoned && !isNumber(type)) || (compared && type == ColumnType::Text))
            source_.fail(given.offset, QStringLiteral("total=\"%1\" 不合欄位 %2 的型態")
                                           .arg(given.value, made_.field(made.fields.front()).name()));
        made.aggregate = names_.aggregate({made.total, made.fields, made.when});
    }

    const TemplateText& source_;
    TemplateNames& names_;
    Template& made_;
};

} // namespace

void readBody(const TemplateText& source, const XmlElement& root, TemplateNames& names, Template& made) {
    BodyReader(source, names, made).run(root);
}

} // namespace pontrel::paper
