#pragma once

#include "paper/TextMeasure.h"

#include <QFont>
#include <QRawFont>

#include <array>
#include <memory>

namespace pontrel::paper {

/// A character's glyph in a face, and how far it advances in thousandths of the font's size.
struct Glyph {
    static constexpr quint32 Unknown = 0xffffffff; ///< Not looked up yet.
    static constexpr quint32 None = 0xfffffffe;    ///< Needs a text layout: missing, a mark, right to left.
    quint32 index = Unknown;
    int advance = 0;
};

/// A face with a cache of its glyphs, measured at 1,000 units an em, so that breaks and cuts are the same on
/// every device.
class GlyphFace {
  public:
    GlyphFace(const QString& family, bool bold);

    [[nodiscard]] const Glyph& glyph(char32_t character) const;
    [[nodiscard]] const QFont& font() const { return font_; }      ///< 1,000 pixels high.
    [[nodiscard]] const QRawFont& rawFont() const { return raw_; } ///< The same.

  private:
    using Block = std::array<Glyph, 256>;
    void look(Glyph& glyph, char32_t character) const;

    QFont font_;
    QRawFont raw_;
    mutable std::array<std::unique_ptr<Block>, 0x1100> blocks_;
};

/// Measures with the faces of a template's fonts. For one thread.
class GlyphMeasure : public TextMeasure {
  public:
    /// The face that reports are printed in where the template names none.
    static QString programFamily() { return QStringLiteral("Noto Sans CJK TC"); }

    explicit GlyphMeasure(const Template& layout);

    [[nodiscard]] int width(int font, QStringView text) const override;
    [[nodiscard]] qsizetype fitting(int font, QStringView text, int width) const override;
    [[nodiscard]] int lineHeight(int font) const override;
    [[nodiscard]] int ascent(int font) const;

    /// The size of a font in 1/100 mm.
    [[nodiscard]] double size(int font) const { return sizes_[static_cast<std::size_t>(font)]; }
    [[nodiscard]] const GlyphFace& face(int font) const { return *faces_[static_cast<std::size_t>(font)]; }

    /// Whether every character has a glyph that stands by itself, so that no text layout is needed.
    [[nodiscard]] bool isPlain(int font, QStringView text) const;

  private:
    [[nodiscard]] int inLength(int font, std::int64_t units) const;
    [[nodiscard]] std::int64_t laidOut(int font, QStringView text) const;

    std::array<std::shared_ptr<const GlyphFace>, 3> faces_;
    std::array<double, 3> sizes_{};
};

/// The character at that place of a text, which moves behind it; half a surrogate pair is itself.
[[nodiscard]] char32_t nextCharacter(QStringView text, qsizetype& at);

} // namespace pontrel::paper
