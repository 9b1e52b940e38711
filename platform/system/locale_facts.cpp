#include "platform/system/locale_facts.h"

#include <langinfo.h>
#include <locale.h>

#include <QHash>
#include <climits>
#include <optional>

namespace platform {

namespace {

// What the C library knows of the locale's money; nothing where its data are not installed.
std::optional<int> decimalsOfLibrary(const QLocale& locale) {
    const QByteArray own = locale.name().toLatin1() + ".UTF-8";
    const locale_t data = newlocale(LC_MONETARY_MASK, own.constData(), static_cast<locale_t>(nullptr));
    if (data == static_cast<locale_t>(nullptr)) {
        return std::nullopt;
    }
    const char decimals = *nl_langinfo_l(__FRAC_DIGITS, data);
    freelocale(data);
    return decimals >= 0 && decimals < CHAR_MAX ? std::optional<int>(decimals) : std::nullopt;
}

// A fresh machine has no locale data, and Qt's own table is no help: it takes the coins out of use for the
// fractions out of use, and would show the dinar without its paras. So the exceptions from two decimals stand
// here, by the currency's code.
int decimalsOfCurrency(const QString& isoCode) {
    static const QHash<QString, int> kExceptions = [] {
        QHash<QString, int> table;
        for (const char* code : {"BIF", "CLP", "DJF", "GNF", "ISK", "JPY", "KMF", "KRW", "PYG", "RWF", "UGX",
                                 "VND", "VUV", "XAF", "XOF", "XPF"}) {
            table.insert(QString::fromLatin1(code), 0);
        }
        for (const char* code : {"BHD", "IQD", "JOD", "KWD", "LYD", "OMR", "TND"}) {
            table.insert(QString::fromLatin1(code), 3);
        }
        return table;
    }();
    return kExceptions.value(isoCode, 2);
}

void readNumberFacts(LocaleFacts& facts) {
    const QString point = facts.locale.decimalPoint();
    facts.decimal = point.isEmpty() ? QLatin1Char('.') : point.at(0);
    facts.decimalText = facts.decimal;
    facts.group = facts.locale.groupSeparator();
    facts.groupCharacters = facts.group;
    const QString blanks = QStringLiteral(" \u00A0\u202F\u2009");
    const QString apostrophes = QStringLiteral("'\u2019");
    for (const QString& family : {blanks, apostrophes}) {
        if (!facts.group.isEmpty() && family.contains(facts.group)) {
            facts.groupCharacters = family;
        }
    }
    facts.groupCharacters.remove(facts.decimal);
}

void readMoneyFacts(LocaleFacts& facts) {
    facts.symbol = facts.locale.currencySymbol();
    facts.isoCode = facts.locale.currencySymbol(QLocale::CurrencyIsoCode);
    facts.currencyDecimals = decimalsOfLibrary(facts.locale).value_or(decimalsOfCurrency(facts.isoCode));
    QLocale plain = facts.locale;
    plain.setNumberOptions(QLocale::OmitGroupSeparator);
    const QString one = plain.toString(1);
    const auto split = [&](const QString& sample, QString& prefix, QString& suffix) {
        const qsizetype at = sample.indexOf(one);
        prefix = at < 0 ? QString() : sample.left(at);
        suffix = at < 0 ? QString() : sample.mid(at + one.size());
    };
    split(plain.toCurrencyString(1.0, facts.symbol, 0), facts.positivePrefix, facts.positiveSuffix);
    split(plain.toCurrencyString(-1.0, facts.symbol, 0), facts.negativePrefix, facts.negativeSuffix);
    if (facts.negativePrefix + facts.negativeSuffix == facts.positivePrefix + facts.positiveSuffix) {
        facts.negativePrefix = QLatin1Char('-') + facts.positivePrefix;
    }
}

LocaleFacts::DatePiece::Kind kindOf(QChar letter, qsizetype length) {
    using Kind = LocaleFacts::DatePiece::Kind;
    if (letter == QLatin1Char('d')) {
        return length <= 2 ? Kind::Day : length == 3 ? Kind::ShortDayName : Kind::DayName;
    }
    if (letter == QLatin1Char('M')) {
        return length <= 2 ? Kind::Month : length == 3 ? Kind::ShortMonthName : Kind::MonthName;
    }
    return Kind::Year;
}

void addText(std::vector<LocaleFacts::DatePiece>& pieces, const QString& text) {
    using Kind = LocaleFacts::DatePiece::Kind;
    if (pieces.empty() || pieces.back().kind != Kind::Text) {
        pieces.push_back({Kind::Text, 0, {}});
    }
    pieces.back().text += text;
}

std::vector<LocaleFacts::DatePiece> piecesOf(const QString& pattern) {
    std::vector<LocaleFacts::DatePiece> pieces;
    const QString letters = QStringLiteral("dMy");
    for (qsizetype i = 0; i < pattern.size();) {
        qsizetype end = i + 1;
        if (pattern[i] == QLatin1Char('\'')) {
            end = pattern.indexOf(QLatin1Char('\''), i + 1);
            end = end < 0 ? pattern.size() : end;
            addText(pieces, end == i + 1 ? QStringLiteral("'") : pattern.mid(i + 1, end - i - 1));
            i = end + 1;
            continue;
        }
        if (!letters.contains(pattern[i])) {
            addText(pieces, pattern[i]);
            i = end;
            continue;
        }
        while (end < pattern.size() && pattern[end] == pattern[i]) {
            ++end;
        }
        const auto kind = kindOf(pattern[i], end - i);
        const bool isYear = kind == LocaleFacts::DatePiece::Kind::Year;
        pieces.push_back({kind, isYear ? 4 : static_cast<int>(end - i), {}});
        i = end;
    }
    return pieces;
}

QString bareWord(const QString& word) {
    QString bare = word.toLower();
    while (bare.endsWith(QLatin1Char('.'))) {
        bare.chop(1);
    }
    return bare;
}

void readDateOrder(LocaleFacts& facts) {
    using Kind = LocaleFacts::DatePiece::Kind;
    int place = 0;
    for (const LocaleFacts::DatePiece& piece : facts.shortDate) {
        if (place == 3 || piece.kind == Kind::Text || piece.kind == Kind::DayName ||
            piece.kind == Kind::ShortDayName) {
            continue;
        }
        facts.dateOrder[place++] = piece.kind == Kind::Day    ? LocaleFacts::Part::Day
                                   : piece.kind == Kind::Year ? LocaleFacts::Part::Year
                                                              : LocaleFacts::Part::Month;
    }
}

void readNames(LocaleFacts& facts) {
    for (const QLocale& locale : {facts.locale, facts.words, QLocale::c()}) {
        for (const auto format : {QLocale::LongFormat, QLocale::ShortFormat}) {
            for (int month = 1; month <= 12; ++month) {
                facts.monthNames.push_back({bareWord(locale.monthName(month, format)), month});
                facts.monthNames.push_back({bareWord(locale.standaloneMonthName(month, format)), month});
            }
            for (int day = 1; day <= 7; ++day) {
                facts.idleWords += bareWord(locale.dayName(day, format));
                facts.idleWords += bareWord(locale.standaloneDayName(day, format));
            }
        }
    }
    for (const LocaleFacts::DatePiece& piece : facts.shortDate) {
        QString word;
        for (const QChar c : piece.text) {
            word += c.isLetter() ? c : QLatin1Char(' ');
        }
        for (const QString& part : word.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            facts.idleWords += bareWord(part);
        }
    }
}

LocaleFacts factsOf(const QLocale& locale) {
    LocaleFacts facts;
    facts.locale = locale;
    facts.words = locale.language() == QLocale::Serbian
                      ? QLocale(QLocale::Serbian, QLocale::LatinScript, locale.territory())
                      : locale;
    readNumberFacts(facts);
    readMoneyFacts(facts);
    facts.shortDate = piecesOf(locale.dateFormat(QLocale::ShortFormat));
    readDateOrder(facts);
    readNames(facts);
    facts.twelveHours =
        locale.timeFormat(QLocale::ShortFormat).contains(QLatin1Char('a'), Qt::CaseInsensitive);
    facts.amText = locale.amText();
    facts.pmText = locale.pmText();
    return facts;
}

thread_local const LocaleFacts* held = nullptr;

}  // namespace

QString withoutDirectionMarks(const QString& text) {
    QString plain = text;
    plain.removeIf([](QChar c) { return c.category() == QChar::Other_Format; });
    return plain;
}

const LocaleFacts& localeFacts() {
    if (held != nullptr) {
        return *held;
    }
    static thread_local std::optional<LocaleFacts> known;
    const QLocale now;
    if (!known || known->locale != now) {
        const int readings = known ? known->reading : 0;
        known = factsOf(now);
        known->reading = readings + 1;
    }
    return *known;
}

HeldLocale::HeldLocale() : before_(held) {
    held = &localeFacts();
}

HeldLocale::~HeldLocale() {
    held = before_;
}

}  // namespace platform
