#include "paper/TemplateRules.h"

namespace pontrel::paper {

namespace {

QStringList words(const char16_t* text) {
    return QString::fromUtf16(text).split(u' ', Qt::SkipEmptyParts);
}

AttributeRule optional(const char16_t* name) {
    return {QString::fromUtf16(name), false, {}};
}

AttributeRule required(AttributeRule rule) {
    rule.required = true;
    return rule;
}

AttributeRule choice(const char16_t* name, const char16_t* choices) {
    return {QString::fromUtf16(name), false, words(choices)};
}

AttributeRule number(const char16_t* name, double least, double most) {
    return {QString::fromUtf16(name), false, {}, true, least, most};
}

AttributeRule yesOrNo(const char16_t* name) {
    return choice(name, u"yes no");
}

/// What every cell may have, and then its own.
std::vector<AttributeRule> cell(std::vector<AttributeRule> own) {
    own.insert(own.end(),
               {choice(u"align", u"left center right"),
                choice(u"format", u"text roc date mm/dd dd weekday hh:mm stamp number 0 0.0 "
                                  u"day.hour months"),
                optional(u"words"), choice(u"zero", u"show blank"), optional(u"empty"),
                choice(u"fit", u"cut wrap shrink shrink-wrap"), optional(u"when"), optional(u"saved-as")});
    return own;
}

enum Trait { Text = 1, Once = 2 };

ElementRule element(const char16_t* name, int traits, const char16_t* children,
                    std::vector<AttributeRule> attributes) {
    return {QString::fromUtf16(name), words(children), (traits & Text) != 0, (traits & Once) != 0,
            std::move(attributes)};
}

std::vector<ElementRule> frame() {
    const AttributeRule font = choice(u"font", u"title head body");
    return {element(u"report", Once, u"paper fonts rows heading group order columns card flow end foot",
                    {required(choice(u"format", u"1")), required(optional(u"code")),
                     required(optional(u"caption"))}),
            element(u"paper", Once, u"",
                    {choice(u"size", u"A3 A4 A5 B4 B5 Letter"), choice(u"orientation", u"portrait landscape"),
                     number(u"margins", 0, 50)}),
            element(u"fonts", Once, u"",
                    {optional(u"title"), optional(u"head"), optional(u"body"), optional(u"family")}),
            element(u"rows", Once, u"look-up related", {required(optional(u"from"))}),
            element(u"look-up", 0, u"", {required(optional(u"table")), required(optional(u"on"))}),
            element(u"related", 0, u"", {required(optional(u"table")), required(optional(u"by"))}),
            element(u"heading", Once, u"text", {}),
            element(u"text", Text, u"",
                    {font, choice(u"align", u"left center right"), optional(u"left"), optional(u"right")}),
            element(u"foot", Once, u"", {optional(u"left"), optional(u"right")})};
}

std::vector<ElementRule> body() {
    return {element(u"group", 0, u"header footer",
                    {required(optional(u"by")), optional(u"caption"), yesOrNo(u"new-page"),
                     yesOrNo(u"repeat"), optional(u"in-tree"), optional(u"name"), optional(u"name-caption")}),
            element(u"header", Text | Once, u"", {}),
            element(u"footer", Once, u"", {optional(u"label")}),
            element(u"order", Once, u"", {required(optional(u"by"))}),
            element(u"columns", Once, u"column", {yesOrNo(u"stripes"), yesOrNo(u"summary")}),
            element(u"column", Text, u"",
                    cell({required(optional(u"caption")), required(number(u"width", 3, 400)),
                          choice(u"once", u"group"), choice(u"total", u"sum count min max distinct")})),
            element(u"card", Once, u"field",
                    {required(number(u"across", 1, 8)), required(number(u"caption-width", 5, 100))}),
            element(u"field", Text, u"", cell({required(optional(u"caption")), number(u"span", 1, 8)})),
            element(u"flow", Once, u"cell", {required(number(u"across", 1, 40))}),
            element(u"cell", Text, u"", cell({optional(u"caption")})),
            element(u"end", Once, u"totals", {optional(u"label")}),
            element(u"totals", 0, u"", {required(optional(u"by")), required(optional(u"label"))})};
}

const ElementRule* findRule(QStringView name) {
    for (const ElementRule& rule : elementRules())
        if (name == rule.name)
            return &rule;
    return nullptr;
}

QString tag(const QString& name) {
    return u'<' + name + u'>';
}

QString tags(const QStringList& names) {
    QStringList all;
    for (const QString& name : names)
        all += tag(name);
    return all.isEmpty() ? QStringLiteral("（沒有）") : listed(all);
}

QStringList attributeNames(const ElementRule& rule) {
    QStringList names;
    for (const AttributeRule& attribute : rule.attributes)
        names += attribute.name;
    return names;
}

void checkValue(const TemplateText& source, const XmlAttribute& given, const AttributeRule& rule) {
    if (!rule.choices.isEmpty() && !rule.choices.contains(given.value))
        source.fail(
            given.offset,
            QStringLiteral("%1 不可為「%2」，可用 %3").arg(given.name, given.value, listed(rule.choices)));
    if (!rule.number)
        return;
    bool isNumber = false;
    const double value = given.value.toDouble(&isNumber);
    // Written so that it is true of what is no number as well.
    if (!isNumber || !(value >= rule.least && value <= rule.most))
        source.fail(given.offset, QStringLiteral("%1 不可為「%2」，要 %3 到 %4 的數字")
                                      .arg(given.name, given.value)
                                      .arg(rule.least)
                                      .arg(rule.most));
}

void checkAttributes(const TemplateText& source, const XmlElement& element, const ElementRule& rule) {
    for (const XmlAttribute& given : element.attributes) {
        const AttributeRule* found = rule.attribute(given.name);
        if (!found)
            source.fail(given.offset, QStringLiteral("%1 的 %2 不認得，可用 %3")
                                          .arg(tag(element.name), given.name,
                                               rule.attributes.empty() ? QStringLiteral("（沒有）")
                                                                       : listed(attributeNames(rule))));
        checkValue(source, given, *found);
    }
    for (const AttributeRule& wanted : rule.attributes)
        if (wanted.required && !element.attribute(wanted.name))
            source.fail(element.offset, QStringLiteral("%1 缺少 %2").arg(tag(element.name), wanted.name));
}

void checkBelow(const TemplateText& source, const XmlElement& element, const ElementRule& rule) {
    checkAttributes(source, element, rule);
    if (!element.text.isEmpty() && !rule.takesText)
        source.fail(element.textOffset,
                    QStringLiteral("%1 裡不可有文字「%2」").arg(tag(element.name), element.text.left(20)));
    QStringList seen;
    for (const XmlElement& child : element.children) {
        if (!rule.children.contains(child.name))
            source.fail(child.offset,
                        QStringLiteral("%1 不認得，可用 %2").arg(tag(child.name), tags(rule.children)));
        const ElementRule* below = findRule(child.name);
        if (below->once && seen.contains(child.name))
            source.fail(child.offset, QStringLiteral("%1 只能有一個").arg(tag(child.name)));
        seen += child.name;
        checkBelow(source, child, *below);
    }
}

} // namespace

const AttributeRule* ElementRule::attribute(QStringView wanted) const {
    for (const AttributeRule& candidate : attributes)
        if (wanted == candidate.name)
            return &candidate;
    return nullptr;
}

const std::vector<ElementRule>& elementRules() {
    static const std::vector<ElementRule> all = [] {
        std::vector<ElementRule> rules = frame();
        for (const ElementRule& rule : body())
            rules.push_back(rule);
        return rules;
    }();
    return all;
}

void checkElements(const TemplateText& source, const XmlElement& root) {
    const ElementRule& report = elementRules().front();
    if (root.name != report.name)
        source.fail(root.offset, QStringLiteral("%1 不認得，可用 %2").arg(tag(root.name), tag(report.name)));
    checkBelow(source, root, report);
}

const QStringList& namedValues() {
    static const QStringList names{
        QStringLiteral("Title"),   QStringLiteral("Sdate"),   QStringLiteral("Edate"),
        QStringLiteral("Att"),     QStringLiteral("Cushion"), QStringLiteral("Delay"),
        QStringLiteral("Earlier"), QStringLiteral("Absent"),  QStringLiteral("Employee")};
    return names;
}

const QStringList& totalWords() {
    static const QStringList names{QStringLiteral("Sum"), QStringLiteral("Min"), QStringLiteral("Max"),
                                   QStringLiteral("Distinct")};
    return names;
}

} // namespace pontrel::paper
