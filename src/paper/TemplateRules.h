#pragma once

#include "paper/TemplateText.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace pontrel::paper {

/// An attribute that an element may have.
struct AttributeRule {
    QString name;
    bool required = false;
    QStringList choices; ///< All that it may say; empty where it takes something else.
    bool number = false; ///< A number from least to most.
    double least = 0;
    double most = 0;
};

/// An element of a template.
struct ElementRule {
    QString name;
    QStringList children; ///< Names of the elements in it.
    bool takesText = false;
    bool once = false; ///< At most once in its parent.
    std::vector<AttributeRule> attributes;

    [[nodiscard]] const AttributeRule* attribute(QStringView wanted) const;
};

/// All elements, the report first.
[[nodiscard]] const std::vector<ElementRule>& elementRules();

/// Checks the element and all below it: names, what is required, choices and ranges of numbers. Throws
/// TemplateFault, which names what would be allowed.
void checkElements(const TemplateText& source, const XmlElement& root);

/// The values that a report may be given by name.
[[nodiscard]] const QStringList& namedValues();

/// Those that the engine makes itself.
namespace made {
inline constexpr const char16_t* Caption = u"Caption";
inline constexpr const char16_t* Code = u"Code";
inline constexpr const char16_t* Period = u"Period";
inline constexpr const char16_t* Today = u"Today";
inline constexpr const char16_t* Page = u"Page";
inline constexpr const char16_t* Pages = u"Pages";
inline constexpr const char16_t* Continued = u"Continued";
inline constexpr const char16_t* Count = u"Count";
} // namespace made

/// The words for totals in braces, as in {Sum Over01.OverHours}.
[[nodiscard]] const QStringList& totalWords();

} // namespace pontrel::paper
