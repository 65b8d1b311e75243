#include "app/platform/IniText.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace tallyview {

namespace {

const QByteArray generalSection = "[General]";

struct Escape {
    char name;
    char16_t character;
};

constexpr std::array escapes{Escape{'a', '\a'}, Escape{'b', '\b'}, Escape{'f', '\f'},
                             Escape{'n', '\n'}, Escape{'r', '\r'}, Escape{'t', '\t'},
                             Escape{'v', '\v'}, Escape{'"', '"'},  Escape{'\\', '\\'}};

bool isHexDigit(QChar character) {
    const char16_t folded = character.unicode() | 0x20;
    return (character >= u'0' && character <= u'9') || (folded >= 'a' && folded <= 'f');
}

bool isBlank(QChar character) {
    return character == u' ' || character == u'\t' || character == u'\r';
}

/// Reads a value from left to right.
class ValueReader {
public:
    explicit ValueReader(QStringView value) : m_rest(value) {}

    QStringList texts() {
        while (!m_rest.isEmpty() && (m_isQuoted || m_rest.front() != u';')) {
            take();
        }
        endText();
        return m_texts;
    }

private:
    void take() {
        const QChar next = m_rest.front();
        m_rest = m_rest.mid(1);
        if (next == u'"') {
            m_isQuoted = !m_isQuoted;
            m_kept = m_text.size();
        } else if (next == u'\\') {
            takeEscape();
            m_kept = m_text.size();
        } else if (m_isQuoted) {
            m_text += next;
            m_kept = m_text.size();
        } else if (next == u',') {
            endText();
        } else if (!isBlank(next) || !m_text.isEmpty()) {
            m_text += next;
            m_kept = isBlank(next) ? m_kept : m_text.size();
        }
    }

    void takeEscape() {
        const QChar name = m_rest.isEmpty() ? QChar() : m_rest.front();
        if (name >= u'0' && name <= u'7') {
            takeNumber(8);
            return;
        }
        m_rest = m_rest.mid(m_rest.isEmpty() ? 0 : 1);
        if (name == u'x') {
            takeNumber(16);
            return;
        }
        const auto *const found =
            std::ranges::find(escapes, name, [](const Escape &each) { return QChar(each.name); });
        if (found != escapes.end()) {
            m_text += found->character;
        }
    }

    void takeNumber(int base) {
        qsizetype length = 0;
        while (length < m_rest.size() && isHexDigit(m_rest[length]) &&
               (base == 16 || m_rest[length] < u'8')) {
            ++length;
        }
        m_text += QChar(static_cast<char16_t>(m_rest.first(length).toUInt(nullptr, base)));
        m_rest = m_rest.mid(length);
    }

    void endText() {
        m_texts.append(m_text.first(m_kept));
        m_text.clear();
        m_kept = 0;
    }

    QStringView m_rest;
    QStringList m_texts;
    QString m_text;
    qsizetype m_kept = 0; ///< without the blanks at the end
    bool m_isQuoted = false;
};

/// Invalid for what is neither a text nor a list of texts.
QVariant value(const QByteArray &written) {
    QStringList texts = ValueReader(QString::fromUtf8(written)).texts();
    if (texts == QStringList(QStringLiteral("@Invalid()"))) {
        return QStringList();
    }
    for (QString &text : texts) {
        if (text.startsWith(u'@')) {
            text.remove(0, 1);
            if (!text.startsWith(u'@')) {
                return {};
            }
        }
    }
    return texts.size() == 1 ? QVariant(texts.constFirst()) : QVariant(texts);
}

QString escaped(QChar character) {
    const auto *const found = std::ranges::find(
        escapes, character, [](const Escape &each) { return QChar(each.character); });
    if (found != escapes.end()) {
        return QStringLiteral("\\") + QChar(found->name);
    }
    return QStringLiteral("\\x") + QString::number(character.unicode(), 16);
}

QString written(const QString &text) {
    QString result = text.startsWith(u'@') ? QStringLiteral("@") : QString();
    bool followsNumber = false; // which a digit would continue
    for (const QChar character : text) {
        const bool isPlain = character >= u' ' && character != u'"' && character != u'\\' &&
                             !(followsNumber && isHexDigit(character));
        const QString added = isPlain ? QString(character) : escaped(character);
        followsNumber = added.startsWith(u"\\x");
        result += added;
    }
    const bool needsQuotes = text.startsWith(u' ') || text.endsWith(u' ') || text.contains(u';') ||
                             text.contains(u',') || text.contains(u'=');
    return needsQuotes ? u'"' + result + u'"' : result;
}

QByteArray written(const QVariant &value) {
    if (value.typeId() != QMetaType::QStringList) {
        return written(value.toString()).toUtf8();
    }
    QStringList texts;
    for (const QString &text : value.toStringList()) {
        texts.append(written(text));
    }
    return texts.isEmpty() ? QByteArrayLiteral("@Invalid()") : texts.join(u", ").toUtf8();
}

QString keyOf(const QByteArray &line) {
    const qsizetype end = line.indexOf('=');
    const bool isComment = line.startsWith(';') || line.startsWith('#');
    return end < 0 || isComment ? QString() : QString::fromUtf8(line.first(end).trimmed());
}

} // namespace

IniText::IniText(const QByteArray &text) {
    bool isGeneral = true; // so is anything outside a section
    for (const QByteArray &line : text.split('\n')) {
        const QByteArray trimmed = line.trimmed();
        if (trimmed.startsWith('[')) {
            isGeneral = trimmed.compare(generalSection, Qt::CaseInsensitive) == 0;
            m_lines.append({line, {}});
        } else {
            m_lines.append({line, isGeneral ? keyOf(trimmed) : QString()});
        }
    }
    if (m_lines.constLast().text.isEmpty()) {
        m_lines.removeLast();
    }
}

IniText::Values IniText::values() const {
    Values values;
    for (const Line &line : m_lines) {
        if (!line.key.isEmpty()) {
            values.insert(line.key, value(line.text.mid(line.text.indexOf('=') + 1)));
        }
    }
    values.removeIf([](const auto &each) { return !each.value().isValid(); });
    return values;
}

void IniText::set(const QString &key, const QVariant &value) {
    const auto hasKey = [&](const Line &line) { return line.key == key; };
    const auto found = std::ranges::find_if(m_lines, hasKey);
    const bool isNew = found == m_lines.end();
    const qsizetype place = isNew ? placeForNewKey() : found - m_lines.begin();
    m_lines.removeIf(hasKey);
    if (value.isValid()) {
        m_lines.insert(place, {key.toUtf8() + '=' + written(value), key});
    }
}

/// After the last value of [General]; begins that section if there is none.
qsizetype IniText::placeForNewKey() {
    for (qsizetype place = m_lines.size(); place > 0; --place) {
        const Line &line = m_lines[place - 1];
        const bool isHeading =
            line.text.trimmed().compare(generalSection, Qt::CaseInsensitive) == 0;
        if (isHeading || !line.key.isEmpty()) {
            return place;
        }
    }
    m_lines.append({generalSection, {}});
    return m_lines.size();
}

QByteArray IniText::text() const {
    QByteArray text;
    for (const Line &line : m_lines) {
        text += line.text + '\n';
    }
    return text;
}

} // namespace tallyview
