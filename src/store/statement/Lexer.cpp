#include "store/statement/Lexer.h"

#include "store/Format.h"
#include "store/RunTimeError.h"

namespace pontrel::statement {

namespace {

/// Stands for a literal in a shape, followed by its kind; it appears in no statement's own text.
constexpr char16_t Mark = u'\u0001';

class Cutter {
  public:
    Cutter(QStringView text, Lexed& result, Cut cut)
        : text_(text), result_(result), tokens_(cut == Cut::Tokens) {
        result_.shape.clear();
        result_.shape.reserve(text.size());
        result_.literals.clear();
        result_.tokens.clear();
    }

    void run() {
        while (position_ < text_.size())
            step();
        result_.shape += text_.sliced(shaped_);
        if (tokens_)
            result_.tokens.push_back({TokenKind::End, {}, -1});
    }

  private:
    void step() {
        const QChar character = text_[position_];
        if (character.isSpace())
            ++position_;
        else if (character == u'\'')
            quoted();
        else if (character == u'#')
            date();
        else if (character == u'[')
            bracketed();
        else if (isDigit(character) ||
                 (character == u'.' && isDigit(at(position_ + 1)) && position_ != nameEnd_))
            number();
        else if (isNameCharacter(character))
            name();
        else
            symbol();
    }

    [[nodiscard]] QChar at(qsizetype position) const {
        return position < text_.size() ? text_[position] : QChar();
    }
    [[nodiscard]] static bool isDigit(QChar character) { return character >= u'0' && character <= u'9'; }
    [[nodiscard]] static bool isNameCharacter(QChar character) {
        return character.isLetterOrNumber() || character == u'_';
    }

    void quoted() {
        const qsizetype end = text_.indexOf(u'\'', position_ + 1);
        if (end < 0)
            fail("a text without its closing quote");
        literal(end + 1, Value(text_.sliced(position_ + 1, end - position_ - 1).toString()), u't');
    }

    void date() {
        const qsizetype end = text_.indexOf(u'#', position_ + 1);
        if (end < 0)
            fail("a date without its closing number sign");
        const auto parsed = parseDateTime(text_.sliced(position_ + 1, end - position_ - 1));
        if (!parsed)
            fail("a text between number signs that is no date");
        if (!parsed->time.isValid())
            literal(end + 1, Value(parsed->date), u'd');
        else if (!parsed->date.isValid())
            literal(end + 1, Value(parsed->time), u'h');
        else
            literal(end + 1, Value(QDateTime(parsed->date, parsed->time, Qt::UTC)), u'b');
    }

    void number() {
        qsizetype end = position_;
        bool real = false;
        while (isDigit(at(end)) || (at(end) == u'.' && !real)) {
            real = real || at(end) == u'.';
            ++end;
        }
        if (isNameCharacter(at(end)))
            fail("a number that runs into a name");
        const QStringView digits = text_.sliced(position_, end - position_);
        bool good = false;
        const qint64 whole = digits.toLongLong(&good);
        if (good)
            literal(end, Value(whole), u'i');
        else
            literal(end, Value(digits.toDouble()), u'r');
    }

    void name() {
        qsizetype end = position_;
        while (isNameCharacter(at(end)))
            ++end;
        token(TokenKind::Name, end, text_.sliced(position_, end - position_));
    }

    void bracketed() {
        const qsizetype end = text_.indexOf(u']', position_);
        if (end <= position_ + 1)
            fail("a bracket without a name or an end");
        token(TokenKind::Bracketed, end + 1, text_.sliced(position_ + 1, end - position_ - 1));
    }

    void symbol() {
        static constexpr QStringView known = u"(),.*=<>+-/\\&;";
        const QChar character = text_[position_];
        if (!known.contains(character))
            fail("a character without a meaning");
        const QChar next = at(position_ + 1);
        const bool two =
            (character == u'<' && (next == u'>' || next == u'=')) || (character == u'>' && next == u'=');
        const qsizetype length = two ? 2 : 1;
        token(TokenKind::Symbol, position_ + length, text_.sliced(position_, length));
    }

    void token(TokenKind kind, qsizetype end, QStringView text) {
        if (tokens_)
            result_.tokens.push_back({kind, text, -1});
        position_ = end;
        // A dot right behind a name parts a table from its column, whatever follows.
        if (kind != TokenKind::Symbol)
            nameEnd_ = end;
    }

    void literal(qsizetype end, Value value, char16_t kind) {
        result_.shape += text_.sliced(shaped_, position_ - shaped_);
        result_.shape += Mark;
        result_.shape += kind;
        shaped_ = end;
        if (tokens_)
            result_.tokens.push_back({TokenKind::Literal, text_.sliced(position_, end - position_),
                                      static_cast<int>(result_.literals.size())});
        result_.literals.push_back(std::move(value));
        position_ = end;
    }

    [[noreturn]] void fail(const char* reason) const {
        throw runTimeError(error::Syntax, QString::fromLatin1(reason), text_.toString());
    }

    QStringView text_;
    Lexed& result_;
    bool tokens_;
    qsizetype position_ = 0;
    qsizetype shaped_ = 0;   ///< What stands before is in the shape.
    qsizetype nameEnd_ = -1; ///< Where the last name ended.
};

} // namespace

void lex(QStringView text, Lexed& result, Cut cut) {
    Cutter(text, result, cut).run();
}

} // namespace pontrel::statement
