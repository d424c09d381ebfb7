#include "paper/TemplateReader.h"

#include "paper/TemplateBody.h"
#include "paper/TemplateNames.h"
#include "paper/TemplateRules.h"

#include <algorithm>
#include <cmath>

namespace pontrel::paper {

namespace {

constexpr std::size_t MostGroups = 6;
constexpr std::size_t MostHeadingLines = 20;

struct Paper {
    const char16_t* name;
    int width, height;
};
constexpr Paper Papers[] = {{u"A3", 29700, 42000}, {u"A4", 21000, 29700}, {u"A5", 14800, 21000},
                            {u"B4", 25700, 36400}, {u"B5", 18200, 25700}, {u"Letter", 21590, 27940}};

Align alignNamed(const QString& name) {
    return name == u"center" ? Align::Center : name == u"right" ? Align::Right : Align::Left;
}

/// Reads the parts of a template out of its elements, in the order in which they need each other.
class Reader {
  public:
    explicit Reader(const TemplateText& source) : source_(source), names_(source, made_) {}

    Template run() {
        const XmlElement root = source_.parse();
        checkElements(source_, root);
        made_.code = root.value(u"code");
        made_.caption = root.value(u"caption");
        if (const XmlElement* element = root.child(u"paper"))
            paper(*element);
        else
            paper({});
        if (const XmlElement* element = root.child(u"fonts"))
            fonts(*element);
        rows(required(root, QStringLiteral("rows")));
        for (const XmlElement& child : root.children)
            if (child.name == u"group")
                group(child);
        if (const XmlElement* element = root.child(u"order"))
            order(*element->attribute(u"by"));
        readBody(source_, root, names_, made_);
        furniture(root);
        if (const XmlElement* element = root.child(u"end"))
            end(*element);
        return std::move(made_);
    }

  private:
    const XmlElement& required(const XmlElement& parent, const QString& name) {
        const XmlElement* found = parent.child(name);
        if (!found)
            source_.fail(parent.offset, QStringLiteral("<%1> 缺少 <%2>").arg(parent.name, name));
        return *found;
    }

    void paper(const XmlElement& element) {
        const QString size = element.value(u"size");
        for (const Paper& candidate : Papers)
            if (size == QStringView(candidate.name) ||
                (size.isEmpty() && QStringView(candidate.name) == QStringView(u"A4"))) {
                made_.paperWidth = candidate.width;
                made_.paperHeight = candidate.height;
            }
        if (element.value(u"orientation") == u"landscape")
            std::swap(made_.paperWidth, made_.paperHeight);
        if (const XmlAttribute* margins = element.attribute(u"margins"))
            made_.margin = static_cast<int>(std::lround(margins->value.toDouble() * 100));
    }

    void fonts(const XmlElement& element) {
        made_.family = element.value(u"family");
        const char16_t* names[] = {u"title", u"head", u"body"};
        for (std::size_t font = 0; font < made_.fonts.size(); ++font)
            if (const XmlAttribute* given = element.attribute(names[font]))
                made_.fonts[font] = this->font(*given);
    }

    FontChoice font(const XmlAttribute& given) {
        const QStringList parts = given.value.split(u' ', Qt::SkipEmptyParts);
        const double points = parts.value(0).toDouble();
        const bool bold = parts.value(1) == u"bold";
        if (!(points >= 4 && points <= 72) || parts.size() > (bold ? 2 : 1))
            source_.fail(given.offset, QStringLiteral("%1 不可為「%2」，要 4 到 72 的點數，可再加 bold")
                                           .arg(given.name, given.value));
        return {points, bold};
    }

    void rows(const XmlElement& element) {
        const XmlAttribute& from = *element.attribute(u"from");
        made_.from = names_.table(from.value, from.offset);
        names_.add(made_.from);
        for (const XmlElement& child : element.children)
            child.name == u"look-up" ? lookUp(child) : related(child);
    }

    void lookUp(const XmlElement& element) {
        const XmlAttribute& given = *element.attribute(u"table");
        const Table* table = names_.table(given.value, given.offset);
        if (names_.knows(table))
            source_.fail(given.offset, QStringLiteral("資料表 %1 已經在 <rows> 裡").arg(table->name));
        const XmlAttribute& on = *element.attribute(u"on");
        const QStringList fields = on.value.split(u',');
        // With less than the whole key a row would come once for each that it finds.
        if (table->key.isEmpty() || fields.size() != table->key.size())
            source_.fail(
                on.offset,
                table->key.isEmpty()
                    ? QStringLiteral("資料表 %1 沒有鍵，不能查").arg(table->name)
                    : QStringLiteral("%1 的鍵是 %2，on 要同樣多的欄位").arg(table->name, listed(table->key)));
        LookUp made{table, {}};
        for (qsizetype index = 0; index < fields.size(); ++index) {
            made.on.push_back(names_.field(fields[index].trimmed(), on.offset));
            sameType(*table, table->indexOf(table->key[index]), made.on.back(), on.offset);
        }
        made_.lookUps.push_back(std::move(made));
        names_.add(table);
    }

    void related(const XmlElement& element) {
        const XmlAttribute& given = *element.attribute(u"table");
        const Table* table = names_.table(given.value, given.offset);
        const bool twice = std::any_of(made_.related.begin(), made_.related.end(),
                                       [&](const Related& other) { return other.table == table; });
        if (names_.knows(table) || twice)
            source_.fail(given.offset, QStringLiteral("資料表 %1 已經在 <rows> 裡").arg(table->name));
        const XmlAttribute& by = *element.attribute(u"by");
        const QString name = by.value.trimmed();
        const int column = names_.column(*table, name, by.offset);
        const int field = names_.field(name, by.offset);
        sameType(*table, column, field, by.offset);
        made_.related.push_back({table, column, field});
    }

    void sameType(const Table& table, int column, int field, qsizetype offset) {
        const Column& stored = table.columns[static_cast<std::size_t>(column)];
        if (stored.type != made_.field(field).type())
            source_.fail(offset, QStringLiteral("欄位 %1 的型態與 %2.%3 不同")
                                     .arg(made_.field(field).name(), table.name, stored.name));
    }

    void group(const XmlElement& element) {
        if (made_.groups.size() == MostGroups)
            source_.fail(element.offset, QStringLiteral("<group> 最多 %1 個").arg(MostGroups));
        Group made;
        const XmlAttribute& by = *element.attribute(u"by");
        made.by = names_.field(by.value.trimmed(), by.offset);
        made.caption = element.value(u"caption");
        if (made.caption.isEmpty())
            made.caption = made_.field(made.by).stored().name;
        if (const XmlAttribute* name = element.attribute(u"name")) {
            made.name = names_.field(name->value.trimmed(), name->offset);
            made.nameCaption = element.value(u"name-caption");
            if (made.nameCaption.isEmpty())
                made.nameCaption = made_.field(made.name).stored().name;
        }
        made.newPage = element.value(u"new-page") == u"yes";
        made.repeat = element.value(u"repeat") == u"yes";
        if (const XmlAttribute* tree = element.attribute(u"in-tree"))
            made.inTree = names_.pieces(tree->value, tree->offset, TextPlace::Tree);
        if (const XmlElement* header = element.child(u"header")) {
            made.hasHeader = true;
            made.header = names_.pieces(header->text, header->textOffset, TextPlace::Header);
        }
        if (const XmlElement* footer = element.child(u"footer")) {
            made.hasFooter = true;
            made.footer = label(*footer);
        }
        made_.groups.push_back(std::move(made));
    }

    void order(const XmlAttribute& by) {
        for (const QString& part : by.value.split(u',')) {
            QString name = part.trimmed();
            OrderPart kind = OrderPart::Whole;
            for (const auto& [word, wanted] :
                 {std::pair{u"day(", OrderPart::Day}, std::pair{u"month(", OrderPart::Month}})
                if (name.startsWith(QStringView(word)) && name.endsWith(u')')) {
                    name = name.mid(QStringView(word).size()).chopped(1).trimmed();
                    kind = wanted;
                }
            const int field = names_.field(name, by.offset);
            const ColumnType type = made_.field(field).type();
            if (kind != OrderPart::Whole && type != ColumnType::Date && type != ColumnType::DateTime)
                source_.fail(by.offset, QStringLiteral("欄位 %1 不是日期").arg(name));
            made_.order.push_back({field, kind});
        }
    }

    Pieces label(const XmlElement& element) {
        const XmlAttribute* given = element.attribute(u"label");
        return given ? names_.pieces(given->value, given->offset, TextPlace::Label) : Pieces();
    }

    TextLine line(const XmlElement& element) {
        TextLine made;
        const QString font = element.value(u"font");
        made.font = font == u"title" ? TitleFont : font == u"head" ? HeadFont : BodyFont;
        made.align = alignNamed(element.value(u"align"));
        made.content = names_.pieces(element.text, element.textOffset, TextPlace::Furniture);
        for (const auto& [name, pieces] : {std::pair{u"left", &made.left}, std::pair{u"right", &made.right}})
            if (const XmlAttribute* given = element.attribute(name))
                *pieces = names_.pieces(given->value, given->offset, TextPlace::Furniture);
        if (!made.content.empty() && (!made.left.empty() || !made.right.empty()))
            source_.fail(element.offset, QStringLiteral("<text> 不可同時有文字與 left、right"));
        return made;
    }

    void furniture(const XmlElement& root) {
        double points = 0;
        if (const XmlElement* heading = root.child(u"heading")) {
            if (heading->children.size() > MostHeadingLines)
                source_.fail(heading->offset, QStringLiteral("<heading> 最多 %1 行").arg(MostHeadingLines));
            for (const XmlElement& child : heading->children) {
                made_.heading.push_back(line(child));
                points += made_.fonts[static_cast<std::size_t>(made_.heading.back().font)].points;
            }
            // Lines of a page take about half more than their fonts' sizes; a point is 35.3 hundredths.
            if (points * 35.3 * 1.5 > (made_.paperHeight - 2 * made_.margin) / 2.0)
                source_.fail(heading->offset, QStringLiteral("<heading> 比半頁還高"));
        }
        if (const XmlElement* foot = root.child(u"foot")) {
            made_.hasFoot = true;
            made_.foot = line(*foot);
        }
    }

    void end(const XmlElement& element) {
        made_.hasEnd = true;
        made_.end = label(element);
        for (const XmlElement& child : element.children) {
            const XmlAttribute& by = *child.attribute(u"by");
            made_.endTotals.push_back({names_.field(by.value.trimmed(), by.offset), label(child)});
        }
    }

    const TemplateText& source_;
    Template made_;
    TemplateNames names_;
};

} // namespace

Template readTemplate(const QString& path) {
    return readTemplate(TemplateText(path));
}

Template readTemplate(const TemplateText& source) {
    return Reader(source).run();
}

} // namespace pontrel::paper
