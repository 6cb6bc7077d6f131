"""Where in a C++ source a fault can be planted, and what would stand there then.

It reads tokens, not a grammar: the sources are formatted by one tool, which makes that enough, and
what comes out wrong does not compile and is taken out again.
"""

import re
from dataclasses import dataclass

# In a replacement this stands for the switch that turns the fault on.
SWITCH = "@planted@"

OPENING = {"(": ")", "[": "]", "{": "}"}
PRECEDENCE = {
    "*": 10, "/": 10, "%": 10, "+": 9, "-": 9, "<<": 8, ">>": 8,
    "<": 6, "<=": 6, ">": 6, ">=": 6, "==": 5, "!=": 5, "&": 4, "^": 3, "|": 2, "&&": 1, "||": 0,
}
CONDITION = -1  # binds more loosely than any of them
EXCHANGED = {
    "<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==",
    "&&": "||", "||": "&&", "+": "-", "-": "+", "*": "/", "/": "*",
}
# At these an operand ends.
ENDS = {",", ";", "?", ":", "=", "+=", "-=", "*=", "/=", "%=", "|=", "&=", "^=",
        "return", "throw", "case", "else", "do"}
NO_STATEMENT = {
    "return", "if", "for", "while", "do", "switch", "case", "default", "else", "try", "catch",
    "using", "namespace", "class", "struct", "union", "enum", "template", "typedef", "static",
    "const", "constexpr", "auto", "goto", "friend", "public", "private", "protected", "explicit",
    "virtual", "extern", "inline", "mutable", "operator", "typename",
    # Texts for developers, and what is no code in a release.
    "Q_ASSERT", "Q_UNREACHABLE", "static_assert", "qWarning", "qDebug",
}
TOKEN = re.compile(r"""
    (?P<comment> //[^\n]* | /\*.*?\*/ )
  | (?P<preprocessor> ^[ ]*\#(?:[^\n]*\\\n)*[^\n]* )
  | (?P<text> (?:u8|u|U|L)? R"\((?:.*?)\)"\w* | (?:u8|u|U|L)?"(?:\\.|[^"\\\n])*"\w*
            | (?:u8|u|U|L)?'(?:\\.|[^'\\\n])+' )
  | (?P<number> 0x[\da-fA-F']+\w* | \d[\d']*(?:\.\d+)?(?:[eE][+-]?\d+)?\w* )
  | (?P<word> [^\W\d]\w* )
  | (?P<sign> <=>|->\*|<<=|>>=|::|->|\+\+|--|&&|\|\||[-+*/%&|^=!<>]=|<<|>>|\.\.\.|. )
  | (?P<blank> \s+ )
""", re.X | re.S | re.M)


@dataclass(frozen=True)
class Place:
    """A fault that could be planted: what is replaced, and by what."""
    path: str
    kind: str
    start: int
    end: int
    line: int
    last_line: int
    before: str
    after: str


@dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int
    end: int


class Source:
    def __init__(self, path, text):
        self.path = path
        self.text = text
        self.tokens = [
            Token(m.lastgroup, m.group(), m.start(), m.end()) for m in TOKEN.finditer(text)
            if not (m.lastgroup in ("blank", "comment", "preprocessor") or m.group().isspace())
        ]

        self.partner, self.outer = self._brackets()

    def _brackets(self):
        """By the tokens' numbers: the other bracket of each pair, and the sign of the bracket in
        which each token stands."""
        partner, outer, open_ones = {}, {}, []
        for i, token in enumerate(self.tokens):
            outer[i] = self.word(open_ones[-1]) if open_ones else ""
            if token.text in OPENING:
                open_ones.append(i)
            elif token.text in OPENING.values() and open_ones:
                other = open_ones.pop()
                partner[i], partner[other] = other, i
        return partner, outer

    def word(self, i):
        return self.tokens[i].text if 0 <= i < len(self.tokens) else ""

    def place(self, kind, first, last, after):
        """Replaces the tokens from `first` to `last`."""
        start, end = self.tokens[first].start, self.tokens[last].end
        return Place(self.path, kind, start, end, self.line_of(start), self.line_of(end),
                     self.text[start:end], after)

    def code(self, first, last):
        return self.text[self.tokens[first].start:self.tokens[last].end]

    def one_line(self, first, last):
        """The same code once more, without changing the number of lines."""
        return " ".join(self.code(first, last).split("\n"))

    def line_of(self, offset):
        return self.text.count("\n", 0, offset) + 1

    def is_binary(self, i):
        """Told by the blanks on both sides: a sign of one operand has none behind it, and neither
        has the bracket of a template."""
        token = self.tokens[i]
        return (token.text in PRECEDENCE and self.text[token.start - 1].isspace()
                and self.text[token.end].isspace())

    def operand_start(self, i, precedence):
        """The first token of the operand left of the operator `i`."""
        first = i
        while first > 0:
            before = first - 1
            word = self.word(before)
            if word in OPENING or word in ENDS:
                break
            if self.is_binary(before) and PRECEDENCE[word] < precedence:
                break
            if word in OPENING.values():
                operand_follows = self.tokens[first].kind in ("word", "number", "text")
                if operand_follows or before not in self.partner:
                    break
                before = self.partner[before]
            first = before
        return first

    def operand_end(self, i, precedence):
        """The last token of the operand right of the operator `i`."""
        last = i
        while last + 1 < len(self.tokens):
            after = last + 1
            word = self.word(after)
            if word in OPENING.values() or word in ENDS:
                break
            if self.is_binary(after) and PRECEDENCE[word] <= precedence:
                break
            last = self.partner.get(after, after) if word in OPENING else after
        return last


def conditions(source):
    """A condition that is met when it is not, and the other way round."""
    for i, token in enumerate(source.tokens):
        if token.text in ("if", "while") and source.word(i + 1) == "(":
            first, last = i + 2, source.partner[i + 1] - 1
            for j in range(first, last):
                if source.word(j) == ";":
                    first = j + 1
        elif token.text == "?":
            first, last = source.operand_start(i, CONDITION), i - 1
        else:
            continue
        if not any(source.word(j) == "=" for j in range(first, last)):
            code = source.code(first, last)
            yield source.place("condition", first, last,
                               f"({SWITCH} != static_cast<bool>({code}))")


def operators(source):
    """An operator's neighbour in its place."""
    for i, token in enumerate(source.tokens):
        other = EXCHANGED.get(token.text)
        if not other or not source.is_binary(i):
            continue
        if token.text in "+-" and "text" in (source.tokens[i - 1].kind, source.tokens[i + 1].kind):
            continue  # texts are joined by a plus, and there is no minus
        precedence = PRECEDENCE[token.text]
        first, last = source.operand_start(i, precedence), source.operand_end(i, precedence)
        if first == i or last == i:
            continue
        left, right = source.one_line(first, i - 1), source.one_line(i + 1, last)
        yield source.place("operator", first, last,
                           f"({SWITCH} ? ({left} {other} {right}) : ({source.code(first, last)}))")


def negations(source):
    """A "not" left out. Where it is a whole condition, that one is inverted already."""
    for i, token in enumerate(source.tokens):
        if token.text == "!" and source.word(i - 2) not in ("if", "while"):
            yield source.place("negation", i, i, f"{SWITCH} != !")


def constants(source):
    """A number one higher, a truth value the other way round."""
    for i, token in enumerate(source.tokens):
        if token.text == "true":
            yield source.place("constant", i, i, f"(!{SWITCH})")
        elif token.text == "false":
            yield source.place("constant", i, i, SWITCH)
        elif token.kind == "number":
            yield number(source, i)


def number(source, i):
    code = source.tokens[i].text
    higher = f"({code} + {SWITCH})"
    line_start = source.text.rfind("\n", 0, source.tokens[i].start) + 1
    first = next(j for j in range(i, -1, -1) if j == 0 or source.tokens[j - 1].start < line_start)
    if source.word(first) != "constexpr":
        return source.place("constant", i, i, higher)
    # What the compiler works out has no switch; a plain constant can have one.
    between = source.text[source.tokens[first].end:source.tokens[i].start]
    return source.place("constant", first, i, f"const{between}{higher}")


def results(source):
    """Another value than the one a function returns."""
    for i, token in enumerate(source.tokens):
        following = source.word(i + 1)
        if token.text != "return" or following in (";", "{", "true", "false", "["):
            continue
        last = statement_end(source, i) - 1
        if last <= i:
            continue
        code = source.one_line(i + 1, last)
        yield source.place("result", i + 1, last,
                           f"{SWITCH} ? altered({code}) : {source.code(i + 1, last)}")


def statements(source):
    """A statement left out; a declaration never is."""
    for i, token in enumerate(source.tokens):
        if token.text in NO_STATEMENT or not begins_statement(source, i):
            continue
        end = statement_end(source, i)
        if end <= i or is_declaration(source, i, end):
            continue
        # A throw at the end of a function is what spares it a value.
        if token.text == "throw" and source.word(end + 1) == "}":
            continue
        yield source.place("statement", i, end, f"{{ if (!{SWITCH}) {source.code(i, end)} }}")


def begins_statement(source, i):
    token = source.tokens[i]
    if token.kind != "word" and token.text not in ("(", "*", "++", "--", "::"):
        return False
    if source.outer[i] != "{":
        return False  # in the head of a loop
    before = source.word(i - 1)
    if before == ")":
        keyword = source.partner.get(i - 1, 0) - 1
        return source.word(keyword) in ("if", "for", "while")
    if before == ":":
        line = source.text.rfind("\n", 0, source.tokens[i - 1].start) + 1
        return re.match(r"\s*(case|default)\b", source.text[line:]) is not None
    return before in ("{", "}", ";", "else", "do")


def statement_end(source, i):
    """The number of the semicolon, or 0 when the brackets close before it."""
    j = i
    while j < len(source.tokens):
        word = source.word(j)
        if word == ";":
            return j
        if word in OPENING.values():
            return 0
        j = source.partner.get(j, j) + 1 if word in OPENING else j + 1
    return 0


def is_declaration(source, first, end):
    """Told by a name right behind its type."""
    for j in range(first + 1, end):
        word, before = source.word(j), source.tokens[j - 1]
        if word in ("(", "=") or word.endswith("="):
            return False
        if source.tokens[j].kind == "word" and before.text != "throw":
            if before.kind == "word" or before.text == ">":
                return True
            if before.text in ("*", "&", "&&") and j - 1 > first:
                return True
    return False


KINDS = (conditions, operators, negations, constants, results, statements)


def places(path, text):
    """All places of a source, in their order."""
    source = Source(path, text)
    found = [place for kind in KINDS for place in kind(source)]
    # Code is repeated on one line, where a comment would swallow the rest.
    return sorted((p for p in found if "//" not in p.before), key=lambda p: (p.start, p.end))
