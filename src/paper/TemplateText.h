#pragma once

#include "store/RunTimeError.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace pontrel::paper {

/// A template that cannot be used: its text names the file, the line and the character, counted from 1, and
/// what is wrong there.
class TemplateFault : public RunTimeError {
  public:
    TemplateFault(const QString& file, int line, int column, const QString& what);
    [[nodiscard]] int line() const { return line_; }
    [[nodiscard]] int column() const { return column_; }

  private:
    int line_;
    int column_;
};

struct XmlAttribute {
    QString name;
    QString value;
    qsizetype offset = 0; ///< Of its name in the text.
};

/// An element of a template, with the places of its parts in the text.
struct XmlElement {
    QString name;
    qsizetype offset = 0;
    std::vector<XmlAttribute> attributes;
    std::vector<XmlElement> children;
    QString text; ///< Trimmed.
    qsizetype textOffset = 0;

    [[nodiscard]] const XmlAttribute* attribute(QStringView wanted) const;
    [[nodiscard]] const XmlElement* child(QStringView wanted) const;
    /// Empty where there is none.
    [[nodiscard]] QString value(QStringView wanted) const;
};

/// The text of a template: read from its file, cut into elements, and able to tell places in it.
class TemplateText {
  public:
    /// Throws error 53 where there is no such file, 75 where it cannot be read, TemplateFault where it is too
    /// large or no UTF-8.
    explicit TemplateText(const QString& path);
    TemplateText(const QString& name, const QByteArray& content);

    /// Throws TemplateFault for what is no well-formed XML, and for a document type.
    [[nodiscard]] XmlElement parse() const;

    [[noreturn]] void fail(qsizetype offset, const QString& what) const;

  private:
    QString name_;
    QString text_;
};

/// Joined for a fault: "甲、乙".
[[nodiscard]] QString listed(const QStringList& names);

} // namespace pontrel::paper
