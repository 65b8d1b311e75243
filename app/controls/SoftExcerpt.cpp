#include "app/controls/SoftExcerpt.h"

#include <QTextBoundaryFinder>
#include <QTextLayout>

#include <algorithm>
#include <utility>

namespace tallyview {

namespace {

/// More than fits into any few lines.
constexpr qsizetype longestShown = 4096;

/// What a text comes to in a few lines.
struct Lines {
    qreal ascent = 0;  ///< of the first
    qsizetype end = 0; ///< of the last
};

Lines linesOf(const QString &text, const QFont &font, qreal width, int lineCount) {
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    Lines lines;
    layout.beginLayout();
    for (int i = 0; i < lineCount; ++i) {
        QTextLine line = layout.createLine();
        if (!line.isValid()) {
            break;
        }
        line.setLineWidth(width);
        lines.ascent = i == 0 ? line.ascent() : lines.ascent;
        lines.end = line.textStart() + line.textLength();
    }
    layout.endLayout();
    return lines;
}

/// `text` without its last character, an ellipsis in its place.
QString shortened(QStringView text) {
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, text.data(), text.size());
    characters.toEnd();
    return text.first(std::max<qsizetype>(characters.toPreviousBoundary(), 0)).toString() + u'…';
}

} // namespace

SoftExcerpt::SoftExcerpt(QObject *parent) : QObject(parent) {
    connect(this, &SoftExcerpt::inputChanged, this, &SoftExcerpt::fit);
}

QString SoftExcerpt::fitted(const QString &text, const QFont &font, qreal width, int lineCount) {
    const qsizetype end = linesOf(text, font, width, lineCount).end;
    if (end >= text.size()) {
        return text;
    }
    QString result = shortened(QStringView(text).first(end));
    // The ellipsis may be wider than what it replaces, or wrap along with the character before it.
    while (result.size() > 1 && linesOf(result, font, width, lineCount).end < result.size()) {
        result = shortened(QStringView(result).chopped(1));
    }
    return result;
}

void SoftExcerpt::componentComplete() {
    m_isComplete = true;
    fit();
}

QString SoftExcerpt::original(int start, int end) const {
    if (start == end) {
        return m_text;
    }
    return m_text.mid(start, end < m_shown.size() ? end - start : -1);
}

void SoftExcerpt::fit() {
    if (!m_isComplete || m_width <= 0) {
        return;
    }
    QString text = m_text.first(std::min(m_text.size(), longestShown));
    std::ranges::replace_if(
        text, [](QChar character) { return character.isSpace(); }, u' ');
    const QString shown = fitted(text, m_font, m_width, m_lineCount);
    const qreal ascent = linesOf(shown, m_font, m_width, 1).ascent;
    const bool shownIsNew = std::exchange(m_shown, shown) != shown;
    if (std::exchange(m_ascent, ascent) != ascent || shownIsNew) {
        emit shownChanged();
    }
}

} // namespace tallyview
