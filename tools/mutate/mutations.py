"""Mistakes that a person could make: where a text can be changed, and into what."""

import io
import re
import tokenize
from collections import Counter
from dataclasses import dataclass


@dataclass(frozen=True)
class Mutation:
    """One change of one file, on one line."""
    file: str  # relative to the root
    start: int
    end: int
    new: str
    kind: str

    def applied(self, text):
        return text[: self.start] + self.new + text[self.end :]

    def line(self, text):
        return text.count("\n", 0, self.start) + 1

    def function(self, text):
        """The name of the function that it is in."""
        names = re.findall(r"^(?:template|inline|static|constexpr|auto|void|bool|[A-Z]\w*|int|std)?[^\n;={}/]*?\b(\w+)\([^;{}]*\{", text[: self.end],
                           flags=re.MULTILINE)
        names = [name for name in names if name not in ("if", "for", "while", "switch", "constexpr")]
        return names[-1] if names else ""

    def change(self, text):
        """What it changes into what, wherever its line stands."""
        first, last = text.rfind("\n", 0, self.start) + 1, text.find("\n", self.end)
        old = " ".join(text[self.start : self.end].split())
        return f"{self.kind}: `{old}` -> `{self.new}` in `{text[first:last].strip()}`"

    def told(self, text):
        return f"{self.file}:{self.line(text)}: {self.change(text)}"


def named(mutations, text):
    """Mistakes of one file by names that stay when other lines change."""
    seen, names = Counter(), {}
    for one in mutations:
        name = f"{one.file}: {one.change(text)}"
        seen[name] += 1
        names[f"{name} {seen[name]}"] = one
    return names


COMPARISONS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}
OPERATIONS = {"+": "-", "-": "+", "*": "+", "/": "*", "%": "*", "+=": "-=", "-=": "+=", "*=": "+=", "&&": "||", "||": "&&"}
NAME = r"[A-Za-z_][\w.]*(?:\[\w+\])?"


def masked(text):
    """Code with comments, texts and directives blanked, at the same places."""
    blank = lambda match: re.sub(r"[^\n]", " ", match[0])
    text = re.sub(r"//[^\n]*|/\*.*?\*/|\"(?:\\.|[^\"\\\n])*\"", blank, text, flags=re.DOTALL)
    text = re.sub(r"\[\[.*?\]\]", blank, text)
    return re.sub(r"^ *(?:#|template|using|namespace|static_assert|concept|friend|requires)[^\n]*", blank, text, flags=re.MULTILINE)


def code_mutations(file, text):
    """Of C++ as clang-format leaves it: binary operators stand between spaces, template brackets don't."""
    code = masked(text)

    def found(kind, pattern, change, group=0):
        for match in re.finditer(pattern, code, flags=re.MULTILINE):
            new = change(match)
            if new is not None:
                yield Mutation(file, match.start(group), match.end(group), new, kind)

    yield from found("comparison", r"(?<=[\w)\]] )(?:[<>]=?|[=!]=)(?= [\w(\-])", lambda m: COMPARISONS[m[0]])
    yield from found("operation", r"(?<=[\w)\]] )(?:[+\-*]=?|[/%]|&&|\|\|)(?= [\w(\-!])", lambda m: OPERATIONS[m[0]])
    yield from found("constant", r"(?<![\w.'<])\d+(?![\w.'>])", lambda m: str(int(m[0]) + 1))
    yield from found("tolerance", r"(?<=0x1p)-?\d+", lambda m: str(int(m[0]) + 1))
    yield from found("order of a sum", rf"(?<=[(= ])({NAME}) \+ ({NAME}) \+ ({NAME})(?![\w(\[.]| [*/])",
                     lambda m: f"{m[1]} + ({m[2]} + {m[3]})")
    yield from found("order of a sum", rf"\(({NAME}) \+ ({NAME})\) \+ \(({NAME}) \+ ({NAME})\)",
                     lambda m: f"({m[1]} + {m[3]}) + ({m[2]} + {m[4]})")
    yield from found("arguments swapped", rf"(?<=\w\()({NAME}), ({NAME})(?=[,)])",
                     lambda m: f"{m[2]}, {m[1]}" if m[1] != m[2] else None)
    statement = rf"^ +(?!return|using|const|auto|static|else|if|for|while|break|continue|constexpr)({NAME}(?:\(| [-+*/|&]?= )[^;{{}}]*;)$"
    yield from found("statement dropped", statement, lambda m: ";", group=1)


def table_mutations(file, text):
    """Of a table of forms: limits, orders of checks, estimates, names of kernels and sums."""
    starts = [0]
    for line in text.splitlines(keepends=True):
        starts.append(starts[-1] + len(line))
    tokens = list(tokenize.generate_tokens(io.StringIO(text).readline))
    groups = {token.string for token, after in zip(tokens, tokens[1:]) if after.string == ":"}
    texts = {token.string for token in tokens if token.type == tokenize.STRING} - groups
    kernels = sorted(name for name in texts if re.fullmatch(r'"[a-z][\w]{5,}(<[^ ]*>)?"', name))
    for before, token, after in zip(tokens, tokens[1:], tokens[2:]):
        if token.line.startswith("from ") or after.string == ":":
            continue
        start, end = (starts[line - 1] + column for line, column in (token.start, token.end))
        for kind, new in table_changes(token, before, kernels):
            yield Mutation(file, start, end, new, kind)


def generator_mutations(file, text):
    """Of Python as the generator is written: conditions, numbers, statements on one line, and operators in the texts that it writes."""
    starts = [0]
    for line in text.splitlines(keepends=True):
        starts.append(starts[-1] + len(line))
    tokens = list(tokenize.generate_tokens(io.StringIO(text).readline))
    for before, token, after in zip(tokens, tokens[1:], tokens[2:]):
        start, end = (starts[line - 1] + column for line, column in (token.start, token.end))
        word = token.string
        if token.type == tokenize.OP and word in COMPARISONS:
            yield Mutation(file, start, end, COMPARISONS[word], "comparison")
        elif word in ("and", "or"):
            yield Mutation(file, start, end, {"and": "or", "or": "and"}[word], "operation")
        elif word == "if" and after.string != "not" or word == "not" and before.string in ("if", "and", "or"):
            yield Mutation(file, start, end, "if not" if word == "if" else "", "condition negated")
        elif word in ("True", "False"):
            yield Mutation(file, start, end, {"True": "False", "False": "True"}[word], "switch")
        elif token.type == tokenize.NUMBER and word.isdigit():
            yield Mutation(file, start, end, str(int(word) + 1), "constant")
        elif token.type == tokenize.STRING and '"""' not in word:
            for match in re.finditer(r"(?<= )(?:[<>]=?|[=!]=|&&|\|\||[+*])(?= )", word):
                changed = {**OPERATIONS, **COMPARISONS}[match[0]]
                yield Mutation(file, start + match.start(), start + match.end(), changed, "written operation")
    statement = r"^ +((?:\w+(?:\.\w+)*\.(?:append|insert)\(.*\)|\w+ \+= .*|yield .*[^(\[,]))$"
    for match in re.finditer(statement, text, flags=re.MULTILINE):
        yield Mutation(file, match.start(1), match.end(1), "pass", "statement dropped")


def table_changes(token, before, kernels):
    word = token.string
    if token.type == tokenize.NUMBER and word.isdigit():
        yield "limit", str(int(word) + 1)
    elif word in ("below", "up_to"):
        yield "limit", {"below": "up_to", "up_to": "below"}[word]
    elif word in ("True", "False"):
        yield "switch", {"True": "False", "False": "True"}[word]
    elif token.type != tokenize.STRING or word.startswith('"""'):
        return
    elif re.fullmatch(r'"[A-Z](?::\w+)?( [A-Z](?::\w+)?)+"', word):
        letters = word.strip('"').split()
        for at in range(len(letters) - 1):
            swapped = [*letters[:at], letters[at + 1], letters[at], *letters[at + 2 :]]
            yield "order of checks", f'"{" ".join(swapped)}"'
    elif re.search(r" [+*] ", word) and re.fullmatch(r'"[\w +*()]+"', word):
        for match in re.finditer(r"(?<= )[+*](?= )", word):
            yield "estimate", f'{word[: match.start()]}{OPERATIONS[match[0]]}{word[match.end() :]}'
        for match in re.finditer(r"\b\d+\b", word):
            yield "estimate", f"{word[: match.start()]}{int(match[0]) + 1}{word[match.end() :]}"
    elif " == " in word:
        for match in re.finditer("==", word):
            yield "match of sizes", f"{word[: match.start()]}!={word[match.end() :]}"
    elif word in kernels and before.string in ("=", ","):
        yield "kernel", kernels[(kernels.index(word) + 1) % len(kernels)]
