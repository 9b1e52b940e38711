"""Where the code can be broken, and how: a small reader of C++ that knows just enough to find the places.

It relies on our format (scripts/format): a comparison stands between spaces, the angle of a template does not; a `*`
or `&` of a type clings to the type.
"""

import dataclasses
import decimal
import re

# Calls that only say how far apart things lie on the screen, in pixels, or how much memory to take beforehand. No shop
# loses anything by them and no test should hold them, so their numbers stay, and they are not dropped.
LOOKS_ONLY = {
    "setContentsMargins", "setSpacing", "setHorizontalSpacing", "setVerticalSpacing", "addSpacing", "addStretch",
    "insertStretch", "setStretch", "setRowStretch", "setColumnStretch", "setStretchFactor", "setMargin",
    "setRowMinimumHeight", "setColumnMinimumWidth", "setMinimumWidth", "setMinimumHeight", "setMinimumSize",
    "setFixedWidth", "setFixedHeight", "setFixedSize", "setMaximumWidth", "setMaximumHeight", "setIconSize",
    "setMinimumSectionSize", "setMinimumContentsLength", "setSizePolicy", "resize", "addWidget", "addLayout", "QSize",
    "QMargins", "setAlpha", "setAlphaF", "reserve",
}  # fmt: skip
# Named numbers of the same sort. A topic, a limit or a column is none of them.
LOOKS_ONLY_NAME = re.compile(r"^k\w*(Margin|Spacing|Gap|IconSize|PictureSize|PictureWidth)$")
# Numbers of a report's design are twips. One of them nobody can see on paper, a centimetre everybody.
REPORT_STEP = 567

TOKEN = re.compile(
    r"""
    (?P<space>\s+ | //[^\n]* | /\*.*?\*/)
  | (?P<raw>(?:u8|[uUL])?R"(?P<fence>[^()\\\s]*)\(.*?\)(?P=fence)")
  | (?P<text>(?:u8|[uUL])?"(?:\\.|[^"\\\n])*" | (?:u8|[uUL])?'(?:\\.|[^'\\\n])+')
  | (?P<number>\.?\d(?:'?[\w.]|(?<=[eEpP])[+-])*)
  | (?P<word>[A-Za-z_]\w*)
  | (?P<sign><=>|->\*|<<=|>>=|\.\.\.|->|::|\+\+|--|&&|\|\||==|!=|<=|>=|\+=|-=|\*=|/=|%=|&=|\|=|\^=|<<|>>|.)
    """,
    re.VERBOSE | re.DOTALL,
)
INSTRUCTION = re.compile(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", re.MULTILINE)  # of the preprocessor

PAIRS = {"(": ")", "[": "]", "{": "}"}
TURNED = {"==": ["!="], "!=": ["=="], "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"]}
SWAPPED = {"&&": "||", "||": "&&"}
RECKONED = {"+": "-", "-": "+", "*": "/", "/": "*", "+=": "-=", "-=": "+="}
TEXT_MAKERS = {"QStringLiteral", "QLatin1String", "QLatin1Char", "QString", "QChar"}
NO_EXPRESSION = {
    "return", "break", "continue", "case", "default", "goto", "throw", "using", "typedef", "static", "const",
    "constexpr", "auto", "class", "struct", "enum", "union", "template", "friend", "public", "private", "protected",
    "delete", "if", "for", "while", "switch", "namespace", "extern", "inline", "virtual", "operator", "Q_UNUSED",
    "static_assert", "thread_local", "volatile", "mutable", "explicit", "typename", "signals", "slots", "unsigned",
}  # fmt: skip
DECLARATION = re.compile(r"[\w:]+(?:<.*?>)?(?:::\w+)?[\s*&]+\w+\s*(?:[=;({\[,]|$)", re.DOTALL)


@dataclasses.dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int

    @property
    def end(self):
        return self.start + len(self.text)


@dataclasses.dataclass(frozen=True)
class Place:
    """One spot of a file and the texts that may stand there instead of what does."""

    file: str
    line: int
    start: int
    end: int
    kind: str
    choices: tuple


def tokens_of(source):
    blank = INSTRUCTION.sub(lambda m: re.sub(r"[^\n]", " ", m.group()), source)
    found = []
    for match in TOKEN.finditer(blank):
        if match.lastgroup != "space" and not match.group().isspace():
            kind = "text" if match["raw"] or match["text"] else "number" if match["number"] else match.lastgroup
            found.append(Token(kind, match.group(), match.start()))
    return found


class Reader:
    """The places of one file. Brackets are matched first; then one walk over the tokens."""

    def __init__(self, file, source):
        self.file = file
        self.source = source
        self.tokens = tokens_of(source)
        self.match = self.matched_brackets()
        self.places = []

    def matched_brackets(self):
        match, open_ones = {}, []
        for i, token in enumerate(self.tokens):
            if token.kind != "sign":
                continue
            if token.text in PAIRS:
                open_ones.append(i)
            elif open_ones and token.text == PAIRS[self.tokens[open_ones[-1]].text]:
                match[i] = open_ones.pop()
                match[match[i]] = i
        return match

    def text(self, i):
        return self.tokens[i].text if 0 <= i < len(self.tokens) else ""

    def kind(self, i):
        return self.tokens[i].kind if 0 <= i < len(self.tokens) else ""

    def between(self, first, last):
        """The source from token `first` up to and with token `last`."""
        return self.source[self.tokens[first].start : self.tokens[last].end]

    def add(self, kind, first, last, *choices):
        start, end = self.tokens[first].start, self.tokens[last].end
        line = self.source.count("\n", 0, start) + 1
        self.places.append(Place(self.file, line, start, end, kind, choices))

    def spaced(self, i):
        token = self.tokens[i]
        return self.source[token.start - 1].isspace() and self.source[token.end : token.end + 1].isspace()

    def is_operand_end(self, i):
        return self.kind(i) in ("word", "number", "text") and self.text(i) != "return" or self.text(i) in (")", "]")

    def read(self):
        skip_to = -1
        for i, token in enumerate(self.tokens):
            if i < skip_to:
                continue
            if token.text == "static_assert" and i + 1 in self.match:
                skip_to = self.match[i + 1]
            elif token.text == "operator":
                skip_to = i + 2
            elif token.kind == "sign":
                self.read_sign(i, token.text)
            elif token.kind == "number":
                self.read_number(i)
            elif token.kind == "word":
                self.read_word(i, token.text)
        Statements(self).read()
        return self.places

    def read_sign(self, i, sign):
        if sign == "?":
            self.negate(self.condition_start(i), i - 1)
        elif sign == "!" and not self.is_operand_end(i - 1):
            self.add("negation lost", i, i, "")
        elif not self.spaced(i) or not self.is_operand_end(i - 1):
            return
        elif sign in TURNED:
            self.add("comparison", i, i, *TURNED[sign])
        elif sign in SWAPPED:
            self.add("logical operator", i, i, SWAPPED[sign])
        elif sign in RECKONED and not self.joins_texts(i):
            self.add("arithmetic", i, i, RECKONED[sign])

    def joins_texts(self, i):
        before = self.match.get(i - 1, i) - 1 if self.text(i - 1) == ")" else i - 1
        return any(self.kind(j) == "text" or self.text(j) in TEXT_MAKERS for j in (before, i + 1))

    def read_word(self, i, word):
        if word in ("true", "false") and self.text(i - 1) != "<":
            self.add("constant", i, i, "false" if word == "true" else "true")
        elif word in ("if", "while") and self.text(i + 1) == "(":
            self.negate(i + 2, self.match[i + 1] - 1)
        elif word == "return":
            self.read_return(i)

    def read_return(self, i):
        last = i
        while self.text(last + 1) != ";":
            last = self.match[last + 1] if self.text(last + 1) in PAIRS else last + 1
        given = self.between(i + 1, last) if last > i else ""
        if last > i + 1 and not re.fullmatch(r"[\w:]*(\{\}|\(\))|\*this|-?[\d.']+F?", given):
            self.add("return value", i + 1, last, "{}")
        elif last == i + 1 and self.kind(last) == "word" and given not in ("true", "false", "nullptr", "this"):
            self.add("return value", last, last, "{}")

    def condition_start(self, i):
        """The first token of the condition in front of the `?` at `i`."""
        first = i
        stops = {"=", "return", "(", "[", "{", ",", ";", "?", ":", "+=", "-=", "throw", "else"}
        while first > 0 and self.text(first - 1) not in stops:
            first = self.match.get(first - 1, first - 1) if self.text(first - 1) in ")]}" else first - 1
        return first

    def negate(self, first, last):
        """A condition turned round as a whole; not where turning its one sign is the same."""
        j = first
        while j <= last and self.text(j) != ";":
            j += 1
        first = j + 1 if j <= last else first  # if (init; condition)
        if first > last:
            return
        signs = [self.text(j) for j in self.outermost(first, last) if self.kind(j) == "sign"]
        joined = "&&" in signs or "||" in signs
        if "=" in signs or not joined and ("==" in signs or "!=" in signs or self.text(first) == "!"):
            return
        self.add("condition", first, last, f"!({self.between(first, last)})")

    def outermost(self, first, last):
        j = first
        while j <= last:
            yield j
            j = self.match[j] + 1 if self.text(j) in PAIRS else j + 1

    def read_number(self, i):
        if self.is_pure_virtual(i) or self.is_template_argument(i) or self.is_array_size(i) or self.is_looks_only(i):
            return
        choices = shifted(self.tokens[i].text, REPORT_STEP if "_design." in self.file else 1)
        if choices:
            self.add("constant", i, i, *choices)

    def is_pure_virtual(self, i):
        return self.text(i - 1) == "=" and self.text(i - 2) in (")", "const", "noexcept", "override")

    def is_template_argument(self, i):
        token = self.tokens[i]
        return self.source[token.start - 1] == "<" or self.source[token.end] == ">"

    def is_array_size(self, i):
        return (self.text(i - 1), self.text(i + 1)) == ("[", "]") and self.kind(i - 2) == "word" and (
            self.kind(i - 3) == "word" and self.text(i - 3) != "return")  # fmt: skip

    def is_looks_only(self, i):
        if self.text(i - 1) == "=" and LOOKS_ONLY_NAME.match(self.text(i - 2)):
            return True
        j = i
        while j > 0 and self.text(j) not in (";", "}"):
            j -= 1
            if self.text(j) in ("(", "{") and self.match.get(j, 0) > i:
                if self.text(j - 1) in LOOKS_ONLY:
                    return True
            elif self.text(j) in (")", "}"):
                j = self.match.get(j, j)
        return False


class Statements:
    """The statements that are an expression on their own (a call, an assignment), found by following the blocks."""

    def __init__(self, reader):
        self.reader = reader
        self.start = 0  # the first token of the present statement
        self.open_ones = []  # (what the bracket holds, the statement it interrupts)

    def read(self):
        for i, token in enumerate(self.reader.tokens):
            if token.kind == "sign":
                self.read_sign(i, token.text)
            elif token.text in ("else", "do", "try") and i == self.start:
                self.start = i + 1

    def holds(self):
        return self.open_ones[-1][0] if self.open_ones else "declarations"

    def read_sign(self, i, sign):
        if sign in PAIRS:
            holds = self.holds_of_brace(i) if sign == "{" else "expression"
            self.open_ones.append((holds, self.start))
            if holds != "expression":
                self.start = i + 1
        elif sign in PAIRS.values() and self.open_ones:
            self.close(i, sign)
        elif sign == ";" and self.holds() != "expression":
            if self.holds() in ("block", "lambda"):
                self.read_statement(self.start, i)
            self.start = i + 1
        elif sign == ":" and self.reader.text(self.start) in ("case", "default") and self.holds() != "expression":
            self.start = i + 1

    def close(self, i, sign):
        holds, interrupted = self.open_ones.pop()
        if holds in ("expression", "lambda"):
            self.start = interrupted
            heads = ("if", "for", "while", "switch", "catch")
            if sign == ")" and self.holds() != "expression" and self.reader.text(self.start) in heads:
                opened = self.reader.match.get(i, -1)
                if opened - self.start in (1, 2):
                    self.start = i + 1
        else:
            self.start = i + 1

    def holds_of_brace(self, i):
        """What the brace at `i` holds: a block, the body of a lambda, declarations, or an expression's values."""
        text = self.reader.text
        inside = self.holds()
        if inside in ("block", "lambda") and i == self.start:
            return "block"
        head = [text(j) for j in range(self.start, i)]
        if inside != "expression" and any(w in ("namespace", "class", "struct", "union", "enum") for w in head[:4]):
            if "(" not in head:
                return "declarations"
        is_body = text(i - 1) in (")", "]", "mutable", "noexcept", "const", "override") or self.after_arrow(i - 1)
        if inside == "declarations":
            return "block" if is_body or text(i - 1) == "}" else "expression"
        return "lambda" if is_body else "expression"

    def after_arrow(self, i):
        reader = self.reader
        while reader.kind(i) == "word" or reader.text(i) in ("::", "<", ">", "*", "&", ","):
            i -= 1
        return reader.text(i) == "->" and reader.text(i - 1) in (")", "mutable", "noexcept")

    def read_statement(self, first, end):
        reader = self.reader
        if first >= end or reader.kind(first) == "number" or reader.text(first) in NO_EXPRESSION | {"[", "{", "(", ")"}:
            return
        if DECLARATION.match(reader.between(first, end)):
            return
        callee = next((j for j in range(first, end) if reader.text(j) == "("), None)
        if callee is not None and reader.text(callee - 1) in LOOKS_ONLY:
            return
        reader.add("statement dropped", first, end, "{}")


def shifted(number, step):
    """The number one up and one down, in the same spelling; a nought only up, since a sign would make it two tokens.

    Small numbers count something, wherever they stand; only larger ones take a larger `step`.
    """
    match = re.fullmatch(r"([\d'.]+)([uUlLfFzZ]*)", number)
    if not match:
        return []
    value = decimal.Decimal(match[1].replace("'", ""))
    step = step if value >= 20 else 1
    nearby = [value + step] + ([value - step] if value >= step else [])
    return [f"{near}{match[2]}" for near in nearby]


def places_of(file, source):
    return Reader(file, source).read()
