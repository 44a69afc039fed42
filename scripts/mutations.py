"""Where src/ can be changed, and the order in which a seed draws the changes.

A change is a comparison, an arithmetic operator, a constant, a condition (negated or fixed), a
dropped statement, or a character of a literal. Each kind is drawn equally often. Comments,
preprocessor lines, static assertions, code of other systems and of other processors are never
changed. The places are found by tokens: a change that does not compile is left to the compiler.
"""
import dataclasses
import random
import re
import subprocess

KINDS = ["comparison", "arithmetic", "constant", "condition", "statement", "character"]

TOKEN = re.compile(r"""
    (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<preprocessor>^[ \t]*\#(?:[^\n\\]|\\.|\\\n)*)
  | (?P<string>"(?:[^"\\\n]|\\.)*")
  | (?P<character>'(?:[^'\\\n]|\\.)+')
  | (?P<number>(?:0[xX][0-9A-Fa-f']+|\d[\d']*(?:\.\d*)?(?:[eE][+-]?\d+)?)[uUlLfF]*)
  | (?P<name>[A-Za-z_]\w*)
  | (?P<operator><<=|>>=|<=>|\.\.\.|->\*|::|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|.)
""", re.VERBOSE | re.MULTILINE | re.DOTALL)

COMPARISONS = {"<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"],
               "==": ["!="], "!=": ["=="]}
ARITHMETIC = {"+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["*"], "<<": [">>"],
              ">>": ["<<"], "&": ["|"], "|": ["&"], "^": ["|"], "+=": ["-="], "-=": ["+="],
              "*=": ["/="], "/=": ["*="], "&=": ["|="], "|=": ["&="], "<<=": [">>="],
              ">>=": ["<<="], "++": ["--"], "--": ["++"]}
LOGICAL = {"&&": ["||"], "||": ["&&"]}
ASSIGNMENTS = {"=", "+=", "-=", "*=", "/=", "%=", "&=", "|=", "^=", "<<=", ">>="}
OPENING = {"(": ")", "[": "]", "{": "}"}
CLOSING = set(OPENING.values())


@dataclasses.dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int

    @property
    def end(self):
        return self.start + len(self.text)


@dataclasses.dataclass(frozen=True)
class Site:
    """A place that can be changed: a range of characters and the texts that can replace it."""
    kind: str
    file: str
    ordinal: int  # of the first token in the file, without comments
    start: int
    end: int
    options: tuple


@dataclasses.dataclass(frozen=True)
class Mutation:
    kind: str
    file: str
    ordinal: int
    start: int
    end: int
    line: int
    text: str  # of the line
    old: str
    new: str
    nth: int  # occurrence of `old` in the line, counted from 1

    @property
    def change(self):
        return f"{self.old} -> {self.new}".strip() + (f" #{self.nth}" if self.nth > 1 else "")

    @property
    def key(self):
        return f"{self.file} {self.ordinal} {self.change}"

    def __str__(self):
        return f"{self.file}:{self.line}: {self.kind}: {self.change}\n        {self.text}"


def one_line(text):
    return " ".join(re.sub(r"//[^\n]*", "", text).split())


def compiled_lines(path, tree):
    """Returns the numbers of the lines that are compiled on this system, or None for all."""
    text = path.read_text()
    if not re.search(r"^\s*#\s*if", text, re.MULTILINE):
        return None
    done = subprocess.run(["g++", "-std=c++20", f"-I{tree / 'src'}", "-E", "-x", "c++", str(path)],
                          capture_output=True, text=True, check=True)
    lines, number, inside = set(), 0, False
    for line in done.stdout.splitlines():
        marker = re.match(r'# (\d+) "([^"]*)"', line)
        if marker:
            number, inside = int(marker.group(1)), marker.group(2) == str(path)
            continue
        if inside and line.strip():
            lines.add(number)
        number += 1
    return lines


def tokens_of(text):
    tokens = [Token(m.lastgroup, m.group(), m.start()) for m in TOKEN.finditer(text)]
    return [t for t in tokens if t.kind != "comment" and not t.text.isspace()]


def pairs_of(tokens):
    """Maps the index of each bracket to that of its partner."""
    partner, stack = {}, []
    for k, token in enumerate(tokens):
        if token.kind != "operator":
            continue
        if token.text in OPENING:
            stack.append(k)
        elif token.text in CLOSING and stack:
            begin = stack.pop()
            partner[begin], partner[k] = k, begin
    return partner


def changed_numbers(text):
    match = re.fullmatch(r"(0[xX][0-9A-Fa-f']+|[\d'.]+(?:[eE][+-]?\d+)?)([uUlLfF]*)", text)
    digits, suffix = match.group(1).replace("'", ""), match.group(2)
    if digits.lower().startswith("0x"):
        return (hex(int(digits, 16) ^ 1).upper().replace("X", "x") + suffix,)
    if digits.isdigit():
        value = int(digits)
        return tuple(f"{v}{suffix}" for v in ([1] if value == 0 else [value - 1, value + 1]))
    value = float(digits)
    changed = 1.0 if value == 0 else value + 1 if 1 <= value < 1e15 else value * 2
    return (repr(changed) + suffix,)


def changed_character(c):
    if c.isalpha():
        return {"z": "a", "Z": "A"}.get(c) or chr(ord(c) + 1)
    if c.isdigit():
        return str((int(c) + 1) % 10)
    return "_" if c == " " else "#" if c == "~" else "~"


def changed_literals(text):
    """The literal with one character changed, for each that can be. Conversions of printf stay."""
    quote, body = text[0], text[1:-1]
    spec = re.compile(r"(?P<escape>\\(?:x[0-9A-Fa-f]+|[0-7]{1,3}|.))|(?P<all>%%)"
                      r"|(?P<conversion>%[-+ #0]*[\d*]*(?:\.[\d*]*)?(?:hh|h|ll|l|z|j|t)?[a-zA-Z])"
                      r"|(?P<plain>.)", re.DOTALL)
    results = []
    for part in spec.finditer(body):
        if part.lastgroup == "escape":
            changes = [(part.start(), part.end(), r"\v" if part.group() == r"\t" else r"\t")]
        elif part.lastgroup == "all":
            changes = []
        elif part.lastgroup == "conversion":
            changes = [(k, k + 1, changed_character(body[k]))
                       for k in range(part.start(), part.end()) if body[k].isdigit()
                       and not (quote == "'" or body[k] == "0" and body[k - 1] == "%")]
        else:
            changes = [(part.start(), part.end(), changed_character(part.group()))]
        results += [quote + body[:a] + new + body[b:] + quote for a, b, new in changes]
    return tuple(results)


def condition_of(tokens, k, partner):
    """The tokens (first, last + 1) of the condition of the `if`, `while` or `for` at k."""
    begin = k + 1
    if begin not in partner:
        return None
    end = partner[begin]
    first, last = begin + 1, end
    if tokens[k].text == "for":
        semicolons, at = [], first
        while at < end:
            if tokens[at].text == ";":
                semicolons.append(at)
            at = partner[at] + 1 if tokens[at].text in OPENING and at in partner else at + 1
        if len(semicolons) != 2:
            return None
        first, last = semicolons[0] + 1, semicolons[1]
    if first >= last or tokens[first].text in ("const", "auto"):
        return None
    return first, last


def ternary_condition(tokens, k, partner):
    """The first token of the condition before the `?` at k."""
    at = k
    while at > 0:
        token = tokens[at - 1]
        if token.text in CLOSING and at - 1 in partner:
            at = partner[at - 1]
        elif (token.text in OPENING or token.text in (",", ";", ":", "?", "return", "}")
              or token.text in ASSIGNMENTS or token.kind == "preprocessor"):
            break
        else:
            at -= 1
    return at


def statement_end(tokens, k, partner):
    """The index of the `;` that ends the statement at k, or None if it is not an expression
    statement or a jump."""
    first = tokens[k]
    if first.text in ("return", "break", "continue"):
        pass
    else:
        at = k
        while tokens[at].text in ("*", "(", "++", "--"):
            at += 1
        if tokens[at].kind != "name" or tokens[at].text in ("if", "for", "while", "switch", "case"):
            return None
        if at == k or tokens[at - 1].text not in ("++", "--"):
            at += 1
            while tokens[at].text in ("::", ".", "->", "[", ")"):
                at = partner[at] + 1 if tokens[at].text == "[" else at + 1
                if tokens[at].kind == "name":
                    at += 1
            if tokens[at].text not in ASSIGNMENTS | {"(", "++", "--"}:
                return None
    at = k
    while at < len(tokens) and tokens[at].text != ";":
        if tokens[at].text in CLOSING:
            return None
        at = partner[at] + 1 if tokens[at].text in OPENING and at in partner else at + 1
    return at if at < len(tokens) else None


def starts_statement(tokens, k, partner):
    before = tokens[k - 1]
    if before.kind == "preprocessor" or before.text in (";", "{", "}", "else", "do"):
        return True
    if before.text == ")" and k - 1 in partner:
        return tokens[partner[k - 1] - 1].text in ("if", "for", "while")
    return before.text == ":" and any(t.text in ("case", "default") for t in tokens[k - 4:k - 1])


def sites_of(path, tree):
    text = path.read_text()
    file = path.relative_to(tree).as_posix()
    lines = compiled_lines(path, tree)
    tokens = tokens_of(text)
    partner = pairs_of(tokens)
    sites, skip_until = [], -1

    def add(kind, k, start, end, options):
        options = tuple(o for o in options if o != text[start:end])
        if options and (lines is None or text.count("\n", 0, start) + 1 in lines):
            sites.append(Site(kind, file, k, start, end, options))

    def is_spaced(token):
        return text[token.start - 1].isspace() and text[token.end].isspace()

    for k, token in enumerate(tokens):
        if token.text == "static_assert" and k + 1 in partner:
            skip_until = partner[k + 1]
        if k <= skip_until or token.kind == "preprocessor":
            continue
        if k > 0 and starts_statement(tokens, k, partner):
            end = statement_end(tokens, k, partner)
            if end:
                add("statement", k, token.start, tokens[end].end, [";"])
        if token.kind == "operator":
            before = tokens[k - 1]
            is_operand = before.kind in ("name", "number") or before.text in (")", "]")
            if token.text in COMPARISONS and is_spaced(token):
                add("comparison", k, token.start, token.end, COMPARISONS[token.text])
            elif token.text in LOGICAL and is_spaced(token):
                add("condition", k, token.start, token.end, LOGICAL[token.text])
            elif token.text in ("++", "--") or token.text in ARITHMETIC and is_spaced(token):
                add("arithmetic", k, token.start, token.end, ARITHMETIC[token.text])
            elif token.text == "-" and (not is_operand or before.text == "return"):
                add("arithmetic", k, token.start, token.end, [""])
            elif token.text == "!":
                add("condition", k, token.start, token.end, [""])
            elif token.text == "?":
                first = ternary_condition(tokens, k, partner)
                add("condition", first, tokens[first].start, before.end, ["true", "false"])
        elif token.text in ("if", "while", "for"):
            found = condition_of(tokens, k, partner)
            if found:
                start, end = tokens[found[0]].start, tokens[found[1] - 1].end
                fixed = ["true", "false"] if token.text == "if" else ["false"]
                add("condition", found[0], start, end, [f"!({text[start:end]})"] + fixed)
        elif token.kind == "number":
            add("constant", k, token.start, token.end, changed_numbers(token.text))
        elif token.text in ("true", "false"):
            other = "false" if token.text == "true" else "true"
            add("constant", k, token.start, token.end, [other])
        elif token.kind in ("string", "character"):
            add("character", k, token.start, token.end, changed_literals(token.text))
    return sites


def sources_of(tree):
    return [path for path in sorted((tree / "src").rglob("*")) if path.suffix in (".cpp", ".h")
            and not path.stem.endswith(("_win32", "_vms"))]


def describe(site, new, texts):
    text = texts[site.file]
    begin = text.rfind("\n", 0, site.start) + 1
    end = text.find("\n", site.start)
    old, new = one_line(text[site.start:site.end]), one_line(new)
    nth = 1
    if site.kind == "character" and len(old) == len(new):
        # Only the changed character and its neighbours, not the whole literal.
        at = next(k for k in range(len(old)) if old[k] != new[k])
        low = max(0, at - 8)
        if len(old) > 24:
            old, new = old[low:at + 9], new[low:at + 9]
    at = text.find(old, begin)
    while old and -1 < at < site.start:
        if at + len(old) <= site.start:
            nth += 1
        at = text.find(old, at + 1)
    return Mutation(site.kind, site.file, site.ordinal, site.start, site.end,
                    text.count("\n", 0, site.start) + 1, one_line(text[begin:end]), old, new, nth)


def draw_mutations(tree, seed):
    """Yields mutations with the replacing text, in an order that the seed decides, each once."""
    chosen = random.Random(seed)
    texts = {p.relative_to(tree).as_posix(): p.read_text() for p in sources_of(tree)}
    sites = [site for path in sources_of(tree) for site in sites_of(path, tree)]
    left = {kind: [site for site in sites if site.kind == kind] for kind in KINDS}
    seen = set()
    while any(left.values()):
        kind = chosen.choice(KINDS)
        if not left[kind]:
            continue
        at = chosen.randrange(len(left[kind]))
        site = left[kind][at]
        options = [o for o in site.options if (site.file, site.start, site.end, o) not in seen]
        if not options:
            left[kind].pop(at)
            continue
        new = chosen.choice(options)
        seen.add((site.file, site.start, site.end, new))
        yield describe(site, new, texts), new
