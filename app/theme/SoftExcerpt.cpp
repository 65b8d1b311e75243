#include "app/theme/SoftExcerpt.h"

#include <QFontMetricsF>
#include <QTextLayout>

#include <utility>

namespace tallyview {

namespace {

/// Where the last of the lines begins and ends.
struct LastLine {
    int begin = 0;
    int end = 0;
};

LastLine layOut(QTextLayout &layout, qreal width, int lineCount) {
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

} // namespace

SoftExcerpt::SoftExcerpt(QObject *parent) : QObject(parent) {
    connect(this, &SoftExcerpt::inputChanged, this, &SoftExcerpt::fit);
}

QString SoftExcerpt::fitted(const QString &text, const QFont &font, qreal width, int lineCount) {
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    const LastLine last = layOut(layout, width, lineCount);
    if (last.end >= text.size()) {
        return text;
    }
    return text.left(last.begin) +
           QFontMetricsF(font).elidedText(text.mid(last.begin), Qt::ElideRight, width);
}

void SoftExcerpt::componentComplete() {
    m_isComplete = true;
    fit();
}

void SoftExcerpt::fit() {
    if (!m_isComplete || m_width <= 0) {
        return;
    }
    const QString shown = fitted(m_text, m_font, m_width, m_lineCount);
    if (std::exchange(m_shown, shown) != shown) {
        emit shownChanged();
    }
}

} // namespace tallyview
