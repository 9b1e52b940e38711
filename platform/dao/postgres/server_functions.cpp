#include "platform/dao/postgres/server_functions.h"

#include <string_view>
#include <vector>

#include "platform/text/order.h"
#include "platform/text/utf8.h"

namespace dao::postgres {
namespace {

std::string utf8(char32_t code) {
    std::string text;
    alphabet::appendUtf8(text, code);
    return text;
}

// What the alphabet makes of letters that do not stand for themselves: each character of `from` becomes the
// one at its place in `to`.
struct Translation {
    std::string from;
    std::string to;

    void add(const std::string& letter, std::string_view meaning) {
        from += letter;
        to += meaning;
    }
};

// A letter that has a place of its own behind a plain one: č is the first behind c.
struct OwnLetter {
    std::string letter;  // small
    char plain;
    char place;
};

struct Letters {
    Translation own;     // capitals of the own letters
    Translation all;     // every letter to the one it counts as
    Translation marked;  // capitals with a mark to small ones
    std::string marks;   // the small letters with a mark
    std::vector<OwnLetter> ownLetters;
};

constexpr char kOwnLetter = static_cast<char>(0xFF);  // in alphabet::orderKey, behind the plain letter
constexpr char kMarks = 0;                            // and between the letters and their marks

void addOwn(Letters& letters, const std::string& letter, std::string_view key) {
    for (const OwnLetter& known : letters.ownLetters) {
        if (known.plain == key[0] && known.place == key[2]) {
            letters.own.add(letter, known.letter);
            letters.all.add(letter, known.letter);
            return;
        }
    }
    letters.ownLetters.push_back({letter, key[0], key[2]});
}

void addMarked(Letters& letters, const std::string& letter, std::string_view plain, std::string_view mark) {
    letters.all.add(letter, plain);
    if (letter == mark) {
        letters.marks += letter;
    } else {
        letters.marked.add(letter, mark);
    }
}

// The last letters that have a second form stand below U+2000, as have all with a mark. From the end, so that
// small letters come before their capitals.
Letters readAlphabet() {
    constexpr char32_t kFirst = 0x80;
    constexpr char32_t kEnd = 0x2000;
    Letters letters;
    for (char32_t code = kEnd; code-- > kFirst;) {
        const std::string letter = utf8(code);
        const std::string key = alphabet::orderKey(letter);
        const std::size_t marks = key.find(kMarks);
        if (key.size() > 2 && key[1] == kOwnLetter) {
            addOwn(letters, letter, key);
        } else if (marks != std::string::npos) {
            addMarked(letters, letter, std::string_view(key).substr(0, marks),
                      std::string_view(key).substr(marks + 1));
        } else if (key != letter) {
            letters.all.add(letter, key);
        }
    }
    return letters;
}

// `text` with each $name$ replaced by what it stands for.
struct Word {
    std::string_view name;
    std::string meaning;
};
std::string filled(std::string text, const std::vector<Word>& words) {
    for (const Word& word : words) {
        for (std::size_t at = 0; (at = text.find(word.name, at)) != std::string::npos;) {
            text.replace(at, word.name.size(), word.meaning);
            at += word.meaning.size();
        }
    }
    return text;
}

constexpr std::string_view kSchema = R"sql(
CREATE SCHEMA dao;
CREATE DOMAIN dao.yesno AS pg_catalog.int2 CHECK (VALUE IN (-1, 0));
CREATE DOMAIN dao.long AS pg_catalog.int4;
CREATE DOMAIN dao.single AS pg_catalog.float4;
CREATE DOMAIN dao.currency AS pg_catalog.int8;
CREATE DOMAIN dao.date AS pg_catalog.float8;
CREATE DOMAIN dao.text AS pg_catalog.text COLLATE pg_catalog."C";
)sql";

// Letters first, each in the form that it compares in; where some of them have marks, a sign below all
// letters and then the marks. U+0001 is that sign, and U+10FFFF puts an own letter behind all that begins
// with its plain one: where a text holds these itself, they are written in two signs.
constexpr std::string_view kKey = R"sql(
CREATE FUNCTION dao.letters_key(t pg_catalog.text) RETURNS pg_catalog.text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $function$
DECLARE
    letters pg_catalog.text := pg_catalog.lower(t COLLATE pg_catalog."C");
    marks pg_catalog.text := '';
BEGIN
    letters := pg_catalog.replace(letters, pg_catalog.chr(2), pg_catalog.chr(2) || pg_catalog.chr(2));
    letters := pg_catalog.replace(letters, pg_catalog.chr(1), pg_catalog.chr(2) || pg_catalog.chr(1));
    letters := pg_catalog.replace(letters, pg_catalog.chr(1114110),
                                  pg_catalog.chr(1114110) || pg_catalog.chr(1));
    letters := pg_catalog.replace(letters, pg_catalog.chr(1114111),
                                  pg_catalog.chr(1114110) || pg_catalog.chr(2));
    IF letters ~ '[^ -~@own@]' THEN
        IF letters ~ '[@marks@@markedFrom@]' THEN
            marks := pg_catalog.rtrim(
                pg_catalog.regexp_replace(pg_catalog.translate(letters, '@markedFrom@', '@markedTo@'),
                                          '[^@marks@]', pg_catalog.chr(1), 'g'),
                pg_catalog.chr(1));
        END IF;
        letters := pg_catalog.translate(letters, '@plain@@allFrom@', '@plain@@allTo@');
    ELSE
        letters := pg_catalog.translate(letters, '@ownFrom@', '@ownTo@');
    END IF;
@ownLetters@    IF marks = '' THEN
        RETURN letters;
    END IF;
    RETURN letters || pg_catalog.chr(1) || marks;
END $function$;

CREATE FUNCTION dao.key(t pg_catalog.text) RETURNS pg_catalog.text LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE
    WHEN pg_catalog.octet_length(t) = pg_catalog.char_length(t) AND pg_catalog.strpos(t, pg_catalog.chr(1)) = 0
         AND pg_catalog.strpos(t, pg_catalog.chr(2)) = 0
    THEN pg_catalog.lower(t COLLATE pg_catalog."C")
    ELSE dao.letters_key(t)
END;
)sql";

// Halves go away from zero; what 64 bits do not hold becomes the largest number that they do.
constexpr std::string_view kNumbers = R"sql(
CREATE FUNCTION dao.round(x pg_catalog.float8) RETURNS pg_catalog.int8 LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN CASE
    WHEN x >= 9223372036854775807::pg_catalog.float8 THEN 9223372036854775807
    WHEN x <= (-9223372036854775807)::pg_catalog.float8 THEN -9223372036854775807 - 1
    WHEN x < 0 THEN pg_catalog.ceil(x - 0.5::pg_catalog.float8)::pg_catalog.int8
    ELSE pg_catalog.floor(x + 0.5::pg_catalog.float8)::pg_catalog.int8
END;

-- No function may be called as a domain is: a call with a value of another domain would become a cast.
CREATE FUNCTION dao.digits(x pg_catalog.float8) RETURNS pg_catalog.text
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE SET extra_float_digits = 1 AS $function$
DECLARE
    digits pg_catalog.text := pg_catalog.abs(x)::pg_catalog.text;
BEGIN
    IF x IS NULL THEN
        RETURN '';
    END IF;
    IF x = 0 THEN
        RETURN '0';
    END IF;
    IF pg_catalog.abs(x) >= 0.00001::pg_catalog.float8 AND pg_catalog.abs(x) < 0.0001::pg_catalog.float8 THEN
        digits := '0.0000' || pg_catalog.replace(pg_catalog.split_part(digits, 'e', 1), '.', '');
    END IF;
    RETURN CASE WHEN x < 0 THEN '-' ELSE '' END || pg_catalog.replace(digits, 'e', 'E');
END $function$;

CREATE FUNCTION dao.digits(x pg_catalog.float4) RETURNS pg_catalog.text
LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $function$
BEGIN
    RETURN dao.digits(pg_catalog.to_char(x::pg_catalog.float8, '9.999999EEEE')::pg_catalog.float8);
END $function$;
)sql";

// The difference counts the borders crossed: from 31 December to 1 January is a year. A date before the first
// day has its time of day counted forward. Years begin in March here, which keeps their odd day for the end.
constexpr std::string_view kDates = R"sql(
CREATE FUNCTION dao.floor_division(a pg_catalog.int8, b pg_catalog.int8) RETURNS pg_catalog.int8
LANGUAGE sql IMMUTABLE PARALLEL SAFE
RETURN a / b - CASE WHEN a % b < 0 THEN 1 ELSE 0 END;

CREATE FUNCTION dao.border(unit pg_catalog.text, date pg_catalog.float8, first_day pg_catalog.int8)
RETURNS pg_catalog.int8 LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $function$
DECLARE
    whole pg_catalog.float8 := pg_catalog.trunc(date);
    seconds pg_catalog.int8 := dao.round((whole + pg_catalog.abs(date - whole)) * 86400);
    day pg_catalog.int8 := dao.floor_division(seconds, 86400);
    era pg_catalog.int8;
    day_of_era pg_catalog.int8;
    year pg_catalog.int8;
    day_of_year pg_catalog.int8;
    month pg_catalog.int8;
BEGIN
    CASE unit
        WHEN 's' THEN RETURN seconds;
        WHEN 'n' THEN RETURN dao.floor_division(seconds, 60);
        WHEN 'h' THEN RETURN dao.floor_division(seconds, 3600);
        WHEN 'd', 'y' THEN RETURN day;
        WHEN 'ww' THEN RETURN dao.floor_division(day + 6 - (first_day - 1), 7);
        ELSE NULL;
    END CASE;
    day := day + 693899;
    era := dao.floor_division(day, 146097);
    day_of_era := day - era * 146097;
    year := (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
    day_of_year := day_of_era - (365 * year + year / 4 - year / 100);
    month := (5 * day_of_year + 2) / 153;
    month := month + CASE WHEN month < 10 THEN 3 ELSE -9 END;
    year := year + era * 400 + CASE WHEN month <= 2 THEN 1 ELSE 0 END;
    CASE unit
        WHEN 'yyyy' THEN RETURN year;
        WHEN 'q' THEN RETURN year * 4 + (month - 1) / 3;
        WHEN 'm' THEN RETURN year * 12 + month;
        ELSE RAISE EXCEPTION 'no interval of dates: %', unit USING ERRCODE = 'invalid_parameter_value';
    END CASE;
END $function$;

CREATE FUNCTION dao.datediff(unit pg_catalog.text, earlier pg_catalog.float8, later pg_catalog.float8,
                             first_day pg_catalog.float8 DEFAULT 1, first_week pg_catalog.float8 DEFAULT 1)
RETURNS pg_catalog.int8 LANGUAGE plpgsql IMMUTABLE PARALLEL SAFE AS $function$
DECLARE
    name pg_catalog.text := pg_catalog.lower(unit COLLATE pg_catalog."C");
    first pg_catalog.int8 := greatest(1, pg_catalog.trunc(coalesce(first_day, 1))::pg_catalog.int8);
BEGIN
    IF unit IS NULL OR earlier IS NULL OR later IS NULL THEN
        RETURN NULL;
    END IF;
    IF NOT (pg_catalog.abs(earlier) < 100000000 AND pg_catalog.abs(later) < 100000000) THEN
        RAISE EXCEPTION 'no date' USING ERRCODE = 'invalid_parameter_value';
    END IF;
    IF name = 'w' THEN
        RETURN (dao.border('d', later, first) - dao.border('d', earlier, first)) / 7;
    END IF;
    RETURN dao.border(name, later, first) - dao.border(name, earlier, first);
END $function$;
)sql";

std::string ownLetterLines(const Letters& letters) {
    std::string lines;
    for (const OwnLetter& own : letters.ownLetters) {
        lines += "    letters := pg_catalog.replace(letters, '" + own.letter + "', '" + own.plain +
                 "' || pg_catalog.chr(1114111) || pg_catalog.chr(" + std::to_string(own.place) + "));\n";
    }
    return lines;
}

std::string keyFunctions() {
    const Letters letters = readAlphabet();
    std::string own = letters.own.from;
    for (const OwnLetter& letter : letters.ownLetters) {
        own += letter.letter;
    }
    return filled(std::string(kKey), {{"@ownLetters@", ownLetterLines(letters)},
                                      {"@ownFrom@", letters.own.from},
                                      {"@ownTo@", letters.own.to},
                                      {"@own@", own},
                                      {"@marks@", letters.marks},
                                      {"@markedFrom@", letters.marked.from},
                                      {"@markedTo@", letters.marked.to},
                                      // Found at once, where most letters are.
                                      {"@plain@", "aeiorntsuldkmpvgjbczhfyxwq 0123456789.,-"},
                                      {"@allFrom@", letters.all.from},
                                      {"@allTo@", letters.all.to}});
}

}  // namespace

std::string serverFunctions() {
    return std::string(kSchema) + keyFunctions() + std::string(kNumbers) + std::string(kDates);
}

std::string textDomain(int size) {
    return size > 0 ? "dao.text_" + std::to_string(size) : "dao.text";
}

std::string createTextDomain(int size) {
    return "CREATE DOMAIN " + textDomain(size) +
           " AS pg_catalog.text COLLATE pg_catalog.\"C\" CHECK (pg_catalog.char_length(VALUE) <= " +
           std::to_string(size) + ")";
}

}  // namespace dao::postgres
