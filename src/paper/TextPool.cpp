#include "paper/ReportRows.h"

#include <QString>

#include <algorithm>

namespace pontrel::paper {

namespace {

constexpr std::size_t FirstSlots = 1024; // a power of two

std::size_t hashOf(QStringView text) {
    std::size_t hash = 14695981039346656037U;
    for (const QChar character : text)
        hash = (hash ^ character.unicode()) * 1099511628211U;
    return hash ^ (hash >> 29U);
}

char16_t lower(char16_t character) {
    return character >= u'A' && character <= u'Z' ? static_cast<char16_t>(character + 32) : character;
}

} // namespace

TextPool::TextPool() : slots_(FirstSlots, -1) {}

std::int32_t TextPool::find(QStringView text) const {
    for (std::size_t at = hashOf(text);; ++at) {
        const std::int32_t place = slots_[at & (slots_.size() - 1)];
        if (place < 0 || this->text(place) == text)
            return place;
    }
}

void TextPool::grow() {
    slots_.assign(slots_.size() * 2, -1);
    for (std::size_t place = 0; place < alike_.size(); ++place) {
        std::size_t at = hashOf(text(static_cast<std::int32_t>(place)));
        while (slots_[at & (slots_.size() - 1)] >= 0)
            ++at;
        slots_[at & (slots_.size() - 1)] = static_cast<std::int32_t>(place);
    }
}

std::int32_t TextPool::add(QStringView text) {
    if (alike_.size() * 2 >= slots_.size())
        grow();
    const auto place = static_cast<std::int32_t>(alike_.size());
    texts_.insert(texts_.end(), text.utf16(), text.utf16() + text.size());
    starts_.push_back(texts_.size());
    alike_.push_back(place);
    std::size_t at = hashOf(this->text(place));
    while (slots_[at & (slots_.size() - 1)] >= 0)
        ++at;
    slots_[at & (slots_.size() - 1)] = place;
    return place;
}

std::int32_t TextPool::place(std::string_view text, std::int32_t likely) {
    // Codes and names are short, and mostly digits and letters.
    incoming_.clear();
    for (const char byte : text) {
        if (static_cast<unsigned char>(byte) > 0x7f) {
            const QString wide = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
            incoming_.assign(wide.utf16(), wide.utf16() + wide.size());
            break;
        }
        incoming_.push_back(static_cast<char16_t>(byte));
    }
    const QStringView wanted(incoming_.data(), static_cast<qsizetype>(incoming_.size()));
    if (static_cast<std::size_t>(likely) < alike_.size() && this->text(likely) == wanted)
        return likely;
    const std::int32_t found = find(wanted);
    if (found >= 0)
        return found;
    const std::int32_t made = add(wanted);
    // The one in small letters stands for all that differ in the case alone.
    std::vector<char16_t> small = incoming_;
    std::transform(small.begin(), small.end(), small.begin(), lower);
    if (small != incoming_) {
        const QStringView folded(small.data(), static_cast<qsizetype>(small.size()));
        const std::int32_t there = find(folded);
        const std::int32_t leader = there >= 0 ? there : add(folded);
        alike_[static_cast<std::size_t>(made)] = leader;
    }
    return made;
}

void TextPool::close() {
    slots_ = {};
    incoming_ = {};
    texts_.shrink_to_fit();
    starts_.shrink_to_fit();
    alike_.shrink_to_fit();
}

} // namespace pontrel::paper
