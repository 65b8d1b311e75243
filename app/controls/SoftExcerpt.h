#pragma once

#include <QFont>
#include <QObject>
#include <QQmlParserStatus>
#include <QtQmlIntegration/qqmlintegration.h>

namespace tallyview {

/// As much of a text as fits into a few lines, for a text editor, which cannot cut its text
/// itself; white space of any kind shows as blanks. Main thread.
class SoftExcerpt : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(QString text MEMBER m_text NOTIFY inputChanged)
    Q_PROPERTY(QFont font MEMBER m_font NOTIFY inputChanged)
    /// Of a line, in points.
    Q_PROPERTY(qreal width MEMBER m_width NOTIFY inputChanged)
    Q_PROPERTY(int lineCount MEMBER m_lineCount NOTIFY inputChanged)
    /// The text, or its beginning with an ellipsis at the end.
    Q_PROPERTY(QString shown READ shown NOTIFY shownChanged)
    /// Points from the top of the first line to its baseline, in the fonts that it needs.
    Q_PROPERTY(qreal ascent MEMBER m_ascent NOTIFY shownChanged)

public:
    explicit SoftExcerpt(QObject *parent = nullptr);

    QString shown() const { return m_shown; }

    /// The text behind what is shown from `start` to `end`: with all that follows if `end` is the
    /// end of what is shown, and the whole text if `start` equals `end`.
    Q_INVOKABLE QString original(int start, int end) const;

    /// The text that fits when lines break between words or, where a word is too long, within it.
    static QString fitted(const QString &text, const QFont &font, qreal width, int lineCount);

    void classBegin() override { m_isComplete = false; }
    void componentComplete() override;

signals:
    void inputChanged();
    void shownChanged();

private:
    void fit();

    QString m_text;
    QFont m_font;
    qreal m_width = 0;
    int m_lineCount = 1;
    QString m_shown;
    qreal m_ascent = 0;
    bool m_isComplete = true;
};

} // namespace tallyview
