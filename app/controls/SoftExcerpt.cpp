#include "app/controls/SoftExcerpt.h"

#include <QTextBoundaryFinder>
#include <QTextLayout>

#include <algorithm>
#include <utility>

namespace tallyview {

namespace {

/// More than fits into any few lines.
constexpr qsizetype longestShown = 4096;

/// Where the last of the lines begins and ends.
struct LastLine {
    qsizetype begin = 0;
    qsizetype end = 0;
};

LastLine lastLine(const QString &text, const QFont &font, qreal width, int lineCount) {
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    LastLine last;
    layout.beginLayout();
    for (int i = 0; i < lineCount; ++i) {
        QTextLine line = layout.createLine();
        if (!line.isValid()) {
            break;
        }
        line.setLineWidth(width);
        last = {line.textStart(), line.textStart() + line.textLength()};
    }
    layout.endLayout();
    return last;
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
    const LastLine last = lastLine(text, font, width, lineCount);
    if (last.end >= text.size()) {
        return text;
    }
    QString result = shortened(QStringView(text).first(last.end));
    // The ellipsis may be wider than what it replaces, or wrap along with the character before it.
    while (result.size() > 1 && lastLine(result, font, width, lineCount).end < result.size()) {
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
    if (std::exchange(m_shown, shown) != shown) {
        emit shownChanged();
    }
}

} // namespace tallyview
