#include "app/theme/SoftExcerpt.h"

#include "app/theme/SoftFont.h"

#include <QTest>
#include <QTextLayout>

using namespace tallyview;

namespace {

/// The lines that an editor of this width makes of `text`.
int lines(const QString &text, const QFont &font, qreal width) {
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    while (true) {
        QTextLine line = layout.createLine();
        if (!line.isValid()) {
            break;
        }
        line.setLineWidth(width);
    }
    layout.endLayout();
    return layout.lineCount();
}

} // namespace

class SoftExcerptTest : public QObject {
    Q_OBJECT

private slots:
    void fillsTheLinesAndNoMore_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("lineCount");
        const QString path = QStringLiteral("/home/someone/projects/") + QString(300, u'a');
        QTest::newRow("empty") << QString() << 2;
        QTest::newRow("short") << QStringLiteral("main") << 2;
        QTest::newRow("path, two lines") << path << 2;
        QTest::newRow("path, three lines") << path << 3;
        QTest::newRow("words") << QStringLiteral("feature and more ").repeated(20) << 2;
        QTest::newRow("Chinese") << QStringLiteral("直骨门复").repeated(100) << 3;
        QTest::newRow("emoji") << QStringLiteral("👩‍👩‍👧").repeated(100) << 2;
    }
    void fillsTheLinesAndNoMore() {
        QFETCH(QString, text);
        QFETCH(int, lineCount);
        const qreal width = 204;
        const QFont font = SoftFont::font(9, QFont::Normal, SoftFont::Monospaced);
        const QString shown = SoftExcerpt::fitted(text, font, width, lineCount);
        QVERIFY(lines(shown, font, width) <= lineCount);
        if (lines(text, font, width) <= lineCount) {
            QCOMPARE(shown, text);
        } else {
            QVERIFY(shown.endsWith(u'…'));
            QVERIFY(text.startsWith(shown.chopped(1)));
            // Little more would have fitted; the longest character here has eight units.
            const QString more = text.left(shown.size() + 16) + u'…';
            QVERIFY(lines(more, font, width) > lineCount);
        }
    }
};

QTEST_MAIN(SoftExcerptTest)

#include "SoftExcerptTest.moc"
