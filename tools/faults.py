# SPDX-License-Identifier: MIT
"""Finds the places in a C++ source where a small fault can be made.

The sources are expected as clang-format leaves them: a binary operator stands between blanks, a template's
bracket, a pointer's star and a sign do not.
"""

import random
import re
from bisect import bisect_right
from collections.abc import Iterator
from dataclasses import dataclass

TOKEN = re.compile(
    r"""(?P<skip>\s+|//[^\n]*|/\*.*?\*/|\#(?:\\\n|[^\n])*)
      |(?P<text>(?:u8|[uUL])?(?:R"(?P<raw>[^(]*)\(.*?\)(?P=raw)"|"(?:\\.|[^"\\])*")|'(?:\\.|[^'\\])+')
      |(?P<number>\d(?:'?[\w.]|(?<=[eE])[-+])*)
      |(?P<word>[A-Za-z_]\w*)
      |(?P<mark><=>|<<=|>>=|->\*?|::|\+\+|--|&&|\|\||[-+*/%<>=!&|^]=|<<|>>|.)""",
    re.VERBOSE | re.DOTALL,
)
OTHERS = {  # operator: (kind of fault, what may stand in its place)
    "<": ("relation", ("<=", ">")), "<=": ("relation", ("<", ">=")), "==": ("relation", ("!=",)),
    ">": ("relation", (">=", "<")), ">=": ("relation", (">", "<=")), "!=": ("relation", ("==",)),
    "+": ("arithmetic", ("-",)), "-": ("arithmetic", ("+",)), "*": ("arithmetic", ("/",)),
    "/": ("arithmetic", ("*",)), "%": ("arithmetic", ("/",)), "+=": ("arithmetic", ("-=",)),
    "-=": ("arithmetic", ("+=",)), "*=": ("arithmetic", ("/=",)), "/=": ("arithmetic", ("*=",)),
    "&&": ("condition", ("||",)), "||": ("condition", ("&&",)),
}  # fmt: skip
ASSERTIONS = {"assert", "static_assert", "Q_ASSERT"}
CLOSING = {"(": ")", "[": "]", "{": "}"}
NOT_A_CALL = {"if", "while", "for", "switch", "catch", "return", "sizeof", "decltype", "throw", "case"}
BODY_FOLLOWS = {")", "const", "noexcept", "override", "final", "mutable"}
CONDITION_FOLLOWS = {"(", "[", "{", ",", ";", "=", "return", "?", ":", "+=", "<<"}
CALL_FOLLOWS = {";", "{", "}", "else", "do"}


@dataclass
class Token:
    kind: str
    text: str
    start: int
    end: int
    code: bool = False  # stands in the body of a function
    partner: int = -1  # the index of the other bracket
    inside: str = ""  # the bracket around it


@dataclass(frozen=True)
class Fault:
    """One place of a file, with the texts that may replace it, or the one that was drawn."""

    kind: str
    line: int
    start: int
    end: int
    texts: tuple[str, ...]

    def drawn(self, luck: random.Random) -> "Fault":
        return Fault(self.kind, self.line, self.start, self.end, (luck.choice(self.texts),))

    def applied(self, source: str) -> str:
        return source[: self.start] + self.texts[0] + source[self.end :]

    def shown(self, source: str) -> tuple[str, str]:
        """The line or lines before and after, each joined into one."""
        first = source.rfind("\n", 0, self.start) + 1
        last = source.find("\n", self.end)
        after = source[first : self.start] + self.texts[0] + source[self.end : last]
        return " ".join(source[first:last].split()), " ".join(after.split())


class Source:
    """A source file cut into tokens."""

    def __init__(self, text: str) -> None:
        self.text = text
        self.tokens = [
            Token(str(match.lastgroup), match.group(), match.start(), match.end())
            for match in TOKEN.finditer(text)
            if match.lastgroup != "skip"
        ]
        self._lines = [0, *(match.end() for match in re.finditer("\n", text))]
        self._pair_brackets()
        self._mark_code()
        self._leave_out_assertions()

    def line_of(self, place: int) -> int:
        return bisect_right(self._lines, place)

    def code_lines(self) -> int:
        return len({self.line_of(token.start) for token in self.tokens if token.code})

    def faults(self) -> list[Fault]:
        return [
            Fault(kind, self.line_of(start), start, end, texts)
            for index, token in enumerate(self.tokens)
            if token.code
            for kind, start, end, texts in self._faults_at(index)
        ]

    def _pair_brackets(self) -> None:
        opened: list[int] = []
        for index, token in enumerate(self.tokens):
            token.inside = self.tokens[opened[-1]].text if opened else ""
            if token.text in CLOSING:
                opened.append(index)
            elif opened and token.text == CLOSING[self.tokens[opened[-1]].text]:
                token.partner = opened.pop()
                self.tokens[token.partner].partner = index
        if any(token.partner < 0 for token in self.tokens if token.text in tuple("()[]{}")):
            raise ValueError("brackets that do not pair")

    def _mark_code(self) -> None:
        """Tells the bodies of functions from what only declares or lists."""
        scopes = ["declarations"]
        head: list[str] = []  # of the statement so far
        for index, token in enumerate(self.tokens):
            token.code = scopes[-1] == "code"
            if token.kind == "number" and "constexpr" in head and head[-1] == "=":
                token.code = True
            if token.text == "{":
                scopes.append(self._scope(scopes[-1], head, self.tokens[index - 1].text))
            elif token.text == "}" and len(scopes) > 1:
                scopes.pop()
            head = [] if token.text in ("{", "}", ";") else [*head, token.text]

    @staticmethod
    def _scope(parent: str, head: list[str], before: str) -> str:
        if parent == "code":
            return "code"
        if ")" in head and (head[-1] in BODY_FOLLOWS or "->" in head):
            # In a table only a lambda has a body.
            return "code" if parent == "declarations" or "[" in head else "data"
        if parent == "declarations" and not head and before == "}":
            return "code"  # of a constructor, after its last member
        return "declarations" if {"namespace", "class", "struct", "union", "extern"} & set(head) else "data"

    def _leave_out_assertions(self) -> None:
        for index, token in enumerate(self.tokens):
            if token.text in ASSERTIONS:
                for inner in self.tokens[index : self.tokens[index + 1].partner + 1]:
                    inner.code = False

    def _faults_at(self, index: int) -> Iterator[tuple[str, int, int, tuple[str, ...]]]:
        token = self.tokens[index]
        blanks = self.text[token.start - 1 : token.start] + self.text[token.end : token.end + 1]
        if token.text in OTHERS and blanks.isspace() and self.tokens[index - 1].text != "operator":
            kind, texts = OTHERS[token.text]
            yield kind, token.start, token.end, texts
        elif token.kind == "number":
            yield "constant", token.start, token.end, tuple(neighbours(token.text))
        elif token.text in ("true", "false"):
            yield "constant", token.start, token.end, ("false" if token.text == "true" else "true",)
        elif token.text in ("if", "while", "for", "?"):
            if span := self._condition(index):
                start, end = self.tokens[span[0]].start, self.tokens[span[1]].end
                yield "condition", start, end, (f"!({self.text[start:end]})",)
        elif token.text == "(" and self.tokens[index - 1].kind == "word":
            yield from self._swaps(index)
        if (end := self._removable(index)) > index:
            yield "call", token.start, self.tokens[end].end, ("",)

    def _condition(self, index: int) -> tuple[int, int] | None:
        """The first and the last token of a condition."""
        if self.tokens[index].text == "?":
            first = index
            while self.tokens[first - 1].text not in CONDITION_FOLLOWS:
                first -= 1
                if self.tokens[first].text in (")", "]", "}"):
                    first = self.tokens[first].partner
            return (first, index - 1) if first < index else None
        opening = self.tokens[index + 1]
        if opening.text != "(":
            return None  # if constexpr
        parts = self._parts(index + 1, ";")
        first, last = parts[-1]
        if self.tokens[index].text == "for":
            if len(parts) != 3:
                return None
            first, last = parts[1]
        declares = any(token.text == "=" for token in self.tokens[first:last])
        return None if declares or first > last else (first, last)

    def _parts(self, opening: int, separator: str) -> list[tuple[int, int]]:
        """The first and the last token of each part between separators in a pair of brackets."""
        parts, first, index = [], opening + 1, opening + 1
        closing = self.tokens[opening].partner
        while index < closing:
            if self.tokens[index].text == separator:
                parts.append((first, index - 1))
                first = index + 1
            elif self.tokens[index].text in CLOSING:
                index = self.tokens[index].partner
            index += 1
        parts.append((first, closing - 1))
        return parts

    def _swaps(self, opening: int) -> Iterator[tuple[str, int, int, tuple[str, ...]]]:
        if self.tokens[opening - 1].text in NOT_A_CALL | {"min", "max"}:  # whose order does not matter
            return
        parts = self._parts(opening, ",")
        for left, right in zip(parts, parts[1:]):
            start, end = self.tokens[left[0]].start, self.tokens[right[1]].end
            one = self.text[start : self.tokens[left[1]].end]
            other = self.text[self.tokens[right[0]].start : end]
            between = self.text[start + len(one) : end - len(other)]
            # What differs in kind as much as a text, a lambda and a member's address would not compile.
            if one != other and not set("{\"<&") & set(one + other):
                yield "arguments", start, end, (other + between + one,)

    def _removable(self, index: int) -> int:
        """The last token of a call whose result nobody uses, or of a guarded way out; else -1."""
        before = index - 1
        token = self.tokens[index]
        if token.text in ("return", "continue", "break", "throw"):
            if self.tokens[before].text == "{":
                before -= 1
            return self._statement_end(index) if self._follows(before, "if") else -1
        guarded = self._follows(before, "if", "for", "while")
        if token.inside != "{" or not guarded and self.tokens[before].text not in CALL_FOLLOWS:
            return -1
        end, last = self._statement_end(index), ""
        while index <= end:
            token = self.tokens[index]
            if token.text in ("(", "["):
                index = token.partner
            elif token.kind == "word" and (last == "word" or token.text in NOT_A_CALL):
                return -1  # a declaration
            elif token.kind != "word" and token.text not in ("::", ".", "->"):
                return -1
            last = token.kind
            index += 1
        return end if self.tokens[end].text == ")" else -1

    def _follows(self, before: int, *words: str) -> bool:
        """Whether the token before closes the condition of one of the words."""
        token = self.tokens[before]
        return token.text == ")" and self.tokens[token.partner - 1].text in words

    def _statement_end(self, index: int) -> int:
        while self.tokens[index].text != ";":
            index = max(index, self.tokens[index].partner) + 1
            if index >= len(self.tokens):
                return -1
        return index - 1


def neighbours(number: str) -> Iterator[str]:
    """The numbers one above and one below; what follows the whole digits stays."""
    base = 16 if number[:2] in ("0x", "0X") else 10
    whole = re.match(r"0[xX][\da-fA-F']+|[\d']+", number)
    assert whole
    value = int(whole[0].replace("'", ""), base)
    for other in (value + 1, value - 1):
        if other >= 0:
            yield (hex(other) if base == 16 else str(other)) + number[whole.end() :]
