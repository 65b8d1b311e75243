#include "app/presentation/ThreadFormatting.h"

#include <QLocale>

#include <unicode/locid.h>
#include <unicode/numberformatter.h>

namespace tallyview::ThreadFormatting {

namespace {

QString formatted(Instant date, const UtcOffset &utcOffset, const QString &pattern) {
    static const QLocale chinese(QLocale::Chinese, QLocale::China);
    return chinese.toString(clockTime(date, utcOffset), pattern);
}

QString wholeUnits(double age, double unit, const QString &suffix) {
    return QString::number(static_cast<qint64>(age / unit)) + suffix;
}

} // namespace

QString full(std::optional<Instant> date, const UtcOffset &utcOffset) {
    if (!date) {
        return QStringLiteral("未知");
    }
    return formatted(*date, utcOffset, QStringLiteral("yyyy/MM/dd HH:mm"));
}

QString relative(std::optional<Instant> date, Instant now, const UtcOffset &utcOffset) {
    if (!date) {
        return QStringLiteral("时间未知");
    }
    const double age = (now - *date).count();
    if (age < 60) {
        return QStringLiteral("刚刚");
    }
    if (age < 3600) {
        return wholeUnits(age, 60, QStringLiteral(" 分钟前"));
    }
    if (age < 86400) {
        return wholeUnits(age, 3600, QStringLiteral(" 小时前"));
    }
    if (age < 604800) {
        return wholeUnits(age, 86400, QStringLiteral(" 天前"));
    }
    return formatted(*date, utcOffset, QStringLiteral("MM/dd"));
}

Number numberIn(const QByteArray &locale) {
    return [formatter = icu::number::NumberFormatter::withLocale(
                icu::Locale::createCanonical(locale.constData()))](std::int64_t value) {
        UErrorCode status = U_ZERO_ERROR;
        const icu::UnicodeString text = formatter.formatInt(value, status).toString(status);
        return U_SUCCESS(status) ? QStringView(text.getBuffer(), text.length()).toString()
                                 : QString::number(value);
    };
}

} // namespace tallyview::ThreadFormatting
