#include "paper/TextMeasure.h"

#include "paper/PageSink.h"

#include <algorithm>

namespace pontrel::paper {

namespace {

constexpr QChar Ellipsis = u'…';

bool closes(QChar mark) {
    return QStringView(u"，。、；：？！）」』】》〉％…～)]},.;:?!%'\"").contains(mark); // no statement
}

bool opens(QChar mark) {
    return QStringView(u"（「『【《〈([{").contains(mark);
}

/// Characters that are no part of words with blanks between.
bool isHan(QChar character) {
    return character.unicode() >= 0x2E80 && !character.isLowSurrogate();
}

/// Whether a line may end before this place of the text.
bool mayBreak(QStringView text, qsizetype at) {
    const QChar before = text[at - 1];
    const QChar after = text[at];
    if (before.isSpace() || after.isSpace())
        return true;
    if (after.isLowSurrogate() || closes(after) || opens(before))
        return false;
    return before == u'-' || isHan(before) || before.isLowSurrogate() || isHan(after);
}

} // namespace

TextMeasure::~TextMeasure() = default;

double startOf(const TextItem& item, const TextMeasure& measure) {
    if (item.align == Align::Left)
        return item.x;
    const double room = item.width - measure.width(item.font, item.text) * item.scale / 100.0;
    return item.x + (item.align == Align::Right ? room : room / 2);
}

FittedText fitted(const TextMeasure& measure, int font, QStringView text, int width, Fit fit,
                  QString& scratch) {
    if (measure.fitting(font, text, width) == text.size())
        return {text};
    int scale = 100;
    if (fit == Fit::Shrink || fit == Fit::ShrinkWrap) {
        const int needed = measure.width(font, text);
        scale = std::max(LeastScale, width * 100 / std::max(1, needed));
        if (scale > LeastScale || needed * LeastScale <= width * 100)
            return {text, scale};
    }
    const int room = width * 100 / scale - measure.width(font, QStringView(&Ellipsis, 1));
    QString cut = text.left(measure.fitting(font, text, std::max(0, room))).toString();
    cut += Ellipsis;
    scratch = std::move(cut); // the text may be a view of it
    return {scratch, scale};
}

std::vector<QStringView> wrapped(const TextMeasure& measure, int font, QStringView text, int width) {
    std::vector<QStringView> lines;
    while (!text.isEmpty()) {
        if (lines.size() + 1 == MostLines) {
            lines.push_back(text);
            break;
        }
        const qsizetype paragraph = text.indexOf(u'\n');
        qsizetype end = measure.fitting(font, text.left(paragraph < 0 ? text.size() : paragraph), width);
        if (paragraph >= 0 && end == paragraph) {
            lines.push_back(text.left(end));
            text = text.mid(end + 1);
            continue;
        }
        if (end == text.size()) {
            lines.push_back(text);
            break;
        }
        qsizetype at = end;
        while (at > 0 && !mayBreak(text, at))
            --at;
        if (at == 0)
            at = std::max<qsizetype>(end, text[0].isHighSurrogate() && text.size() > 1 ? 2 : 1);
        lines.push_back(text.left(at).trimmed());
        text = text.mid(at);
        while (!text.isEmpty() && text[0] == u' ')
            text = text.mid(1);
    }
    if (lines.empty())
        lines.emplace_back();
    return lines;
}

} // namespace pontrel::paper
