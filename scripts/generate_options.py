#!/usr/bin/env python3
"""Generates what depends on the option table (src/app/option_table.h) and on that of the viewers
(viewer_options.h): the option lists of the shell completions and of the manual pages, and the
tables of docs/options.md. The generated parts are between markers; the rest of these files is
written by hand.

    generate_options.py                    writes the files
    generate_options.py --check [PROGRAM]  compares them; ends with 1 if one is stale

PROGRAM is crv_print_options; without it the table is compiled for this purpose.
"""
import dataclasses
import difflib
import re
import sys

import option_table

MARKUP = re.compile(r"`([^`]+)`|\*(\w+)\*")
SENTENCE_END = re.compile(r"(?<=[.:;]) (?=[A-Z*`])")


# ----- the shells


def rules(forms, key):
    """Groups of patterns with the same key, in the order in which a shell must try them. A form
    without a value is the default; it has a rule only where a shorter pattern would match it."""

    def needs_rule(form):
        return form.value != "none" or any(
            other.value != "none"
            and other.rest != "nothing"
            and other.spelling != form.spelling
            and form.spelling.startswith(other.spelling)
            for other in forms
        )

    groups = []
    for form in sorted(
        filter(needs_rule, forms), key=lambda form: (-len(form.spelling), form.rest != "nothing")
    ):
        pattern = form.spelling + ("" if form.rest == "nothing" else "*")
        if groups and groups[-1][0] == key(form):
            groups[-1][1].append(pattern)
        else:
            groups.append((key(form), [pattern]))
    return groups


def wrapped_case(indent, words, separator, end, continuation):
    """Patterns of one rule on lines of at most 100 characters."""
    lines, line = [], indent
    for number, word in enumerate(words):
        piece = word + (separator if number + 1 < len(words) else end)
        if len(line + piece) > 96:
            lines.append(line.rstrip() + continuation)
            line = indent + "    "
        line += piece
    return [*lines, line]


def usual_forms(forms):
    """The forms that a shell offers: all that are listed, except those with a number."""
    return [form for form in forms if form.summary and form.rest != "number"]


def viewer_lines(forms):
    """The options that a shell offers for the viewers, with their summaries. -p1 and -p2 do what -p
    does, and what it does is another thing in each viewer."""
    for form in usual_forms(forms):
        if form.viewer and (form.completion != "chart" or form.spelling == "-p"):
            yield form.spelling, "the output" if form.spelling == "-p" else form.summary
    yield from (("--help", "help"), ("--version", "version"))


def bash_rules(forms):
    for (value, completion), words in rules(forms, lambda form: (form.value, form.completion)):
        *first, last = wrapped_case("    ", words, " | ", ")", " \\")
        yield from first
        yield f"{last} kind={value} offer={completion} ;;"


def generate_bash(forms, _):
    yield from (
        "# Every option with its summary, in the order of the manual page.",
        "_crv_options=(",
    )
    yield from (f"    '{form.spelling}\t{form.summary}'" for form in usual_forms(forms))
    yield from (")", "", "# Those of the viewers.", "_crv_viewer_options=(")
    yield from (f"    '{spelling}\t{summary}'" for spelling, summary in viewer_lines(forms))
    yield from (
        ")",
        "",
        "# Sets kind to the kind of value of the option $1 and offer to what its value is.",
        "_crv_find_option() {",
        "    kind=none offer=",
        "    case $1 in",
    )
    yield from bash_rules(forms)
    yield from ("    esac", "}")


def generate_zsh(forms, _):
    yield from (
        "# Every option with its summary, in the order of the manual page.",
        "_crv_options() {",
        "    local -a lines=(",
    )
    for form in usual_forms(forms):
        summary = form.summary.replace(":", r"\:")
        yield f"        '{form.spelling}:{summary}'"
    yield from (
        "    )",
        "    _describe -V -o 'option' lines",
        "}",
        "",
        "# Those of the viewers.",
        "_crv_viewer_options() {",
        "    local -a lines=(",
    )
    for spelling, summary in viewer_lines(forms):
        summary = summary.replace(":", r"\:")
        yield f"        '{spelling}:{summary}'"
    yield from (
        "    )",
        "    _describe -V -o 'option' lines",
        "}",
        "",
        "# Sets kind to the kind of value of the option $1, offer to what its value is, and hint",
        "# to a text for a value that cannot be offered.",
        "_crv_find_option() {",
        "    kind=none offer= hint=",
        "    case $1 in",
    )
    hints = lambda form: (form.value, form.completion, "" if form.completion else form.summary)
    for (value, completion, hint), words in rules(forms, hints):
        *first, last = wrapped_case("        ", words, " | ", ")", " \\")
        yield from first
        yield f"{last} kind={value} offer={completion} hint='{hint}' ;;"
    yield from ("    esac", "}")


def generate_fish(forms, _):
    yield from (
        "# Prints the kind of value of an option, and what its value is.",
        "function __crv_find_option --argument-names option",
        "    switch $option",
    )
    for (value, completion), words in rules(forms, lambda form: (form.value, form.completion)):
        yield from wrapped_case(
            "        ", ["case", *(f"'{word}'" for word in words)], " ", "", " \\"
        )
        yield f"            printf '%s\\n' {value} '{completion}'"
    yield from (
        "        case '*'",
        "            printf '%s\\n' none ''",
        "    end",
        "end",
        "",
        "# Every option with its summary, in the order of the manual page.",
        "function __crv_option --argument-names name summary",
        "    complete -c crv -n __crv_takes_option -o $name -d $summary",
        "end",
    )
    yield from (
        f"__crv_option '{form.spelling[1:]}' '{form.summary}'" for form in usual_forms(forms)
    )
    yield from (
        "",
        "# Those of the viewers.",
        "function __crv_viewer_option --argument-names kind name summary",
        "    for program in $__crv_viewers",
        "        complete -c $program -n __crv_takes_option $kind $name -d $summary",
        "    end",
        "end",
    )
    for spelling, summary in viewer_lines(forms):
        kind = "-l" if spelling.startswith("--") else "-o"
        yield f"__crv_viewer_option {kind} '{spelling.lstrip('-')}' '{summary}'"


# ----- the documents


def escape_mdoc(text):
    text = re.sub(r"(?<![\w\\])-(?=\d)", r"\\-", text)
    return re.sub(r"^(?=[.'])", r"\\&", text)


def mdoc_macro(code, argument):
    if argument:
        return f"Ar {argument}"
    option, _, value = code.partition(" ")
    if re.fullmatch(r"-\w+", option):
        return f"Fl {option[1:]}" + (f" Li {value}" if value else "")
    return f"Pa {code}" if re.fullmatch(r"[\w*]*\.\w+", code) else f"Li {code}"


def mdoc_lines(text):
    """A text of the table as lines of the manual page, one sentence on a line."""
    for sentence in SENTENCE_END.split(text):
        position = 0
        for found in MARKUP.finditer(sentence):
            before = sentence[position : found.start()].strip()
            if before:
                yield escape_mdoc(before)
            after = re.match(r"[.,;:]+", sentence[found.end() :])
            position = found.end() + (after.end() if after else 0)
            closing = "".join(f" {mark}" for mark in after.group()) if after else ""
            yield f".{mdoc_macro(*found.groups())}{closing}"
        rest = sentence[position:].strip()
        if rest:
            yield escape_mdoc(rest)


def mdoc_argument(name):
    low, _, high = name.partition(":")
    return f"Ar {low} : Ns Ar {high}" if high else f"Ar {name}"


def mdoc_form(form, alone):
    name = form.spelling[1:]
    text = "Fl " + (name if name.isalnum() else rf"\&{name}")
    if form.rest == "number":
        text += " Ns Ar N"
    if form.value_name.startswith("["):
        argument = mdoc_argument(form.value_name.strip("[]"))
        return f"{text} Op {argument}" if alone else f"{text} Oo {argument} Oc"
    return f"{text} {mdoc_argument(form.value_name)}" if form.value_name else text


VALUE_SENTENCES = {
    "none": "",
    "any": "A value.",
    "plain": "A plain value.",
    "table": "A plain value.",
}


def generate_man(section):
    def lines(_, entries):
        yield ".Bl -tag -width 4n"
        for entry in entries:
            if entry.section != section:
                continue
            alone = len(entry.forms) == 1
            yield ".It " + " , ".join(mdoc_form(form, alone) for form in entry.forms)
            for text in (entry.effect, entry.details, VALUE_SENTENCES[entry.forms[0].value]):
                if text:
                    yield from mdoc_lines(text)
        yield ".El"

    return lines


def viewer_man(forms, _):
    """The options of a viewer with an effect, except -p, whose effect is another in each."""
    shared = [form for form in forms if form.summary and form.viewer and form.spelling[:2] != "-p"]
    yield ".Bl -tag -width 4n"
    for option in dict.fromkeys(form.option for form in shared):
        own = [
            dataclasses.replace(form, value_name=form.value_name.strip("[]"))
            for form in shared
            if form.option == option
        ]
        yield ".It " + " , ".join(mdoc_form(form, len(own) == 1) for form in own)
        yield from mdoc_lines(own[0].viewer)
    yield ".El"
    ignored = [form.spelling[1:] for form in forms if form.summary and form.viewer == ""]
    yield ".Pp"
    yield "These options of"
    yield ".Xr crv 1"
    yield "are accepted with their values, and have no effect:"
    yield from (f".Fl {name} ," for name in ignored[:-1])
    yield f".Fl {ignored[-1]} ."


def markdown_value(form):
    if not form.value_name:
        return ""
    name = ":".join(f"*{part}*" for part in form.value_name.strip("[]").split(":"))
    if form.value_name.startswith("["):
        name = f"[{name}]"
    return name if form.value == "any" else f"{name}, plain"


def generate_markdown(section):
    def lines(_, entries):
        yield from ("| option | value | effect |", "|---|---|---|")
        for entry in entries:
            if entry.section == section:
                forms = ", ".join(f"`{form.shown}`" for form in entry.forms)
                yield f"| {forms} | {markdown_value(entry.forms[0])} | {entry.effect} |"

    return lines


# ----- the files

SHELL = (
    "# Generated by scripts/generate_options.py from the option table.",
    "# End of the generated part.",
)
VIEWERS = ("html", "term", "csv")
GENERATED = [
    ("completions/crv.bash", *SHELL, generate_bash),
    ("completions/_crv", *SHELL, generate_zsh),
    ("completions/crv.fish", *SHELL, generate_fish),
    *(
        (
            "man/crv.1",
            rf'.\" Generated by scripts/generate_options.py: {section}.',
            r'.\" End of the generated part.',
            generate_man(section),
        )
        for section in option_table.SECTIONS
    ),
    *(
        (
            f"man/crv-{viewer}.1",
            r'.\" Generated by scripts/generate_options.py: viewers.',
            r'.\" End of the generated part.',
            viewer_man,
        )
        for viewer in VIEWERS
    ),
    *(
        (
            "docs/options.md",
            f"<!-- Generated by scripts/generate_options.py: {section}. -->",
            "<!-- End of the generated part. -->",
            generate_markdown(section),
        )
        for section in option_table.SECTIONS
    ),
]


def replace_part(text, path, begin, end, lines):
    """Replaces the lines between two marker lines."""
    head, found, rest = text.partition(f"{begin}\n")
    _, found_end, tail = rest.partition(f"{end}\n")
    if not found or not found_end or f"{begin}\n" in tail:
        raise ValueError(f"{path} must contain {begin!r} once, and {end!r} after it")
    gap = "\n" if path.endswith(".md") else ""  # a table needs blank lines around it
    return head + found + gap + "".join(f"{line}\n" for line in lines) + gap + found_end + tail


def generate(forms, entries):
    """Returns the text of each file, with its generated parts renewed."""
    texts = {}
    for path, begin, end, lines_of in GENERATED:
        text = texts.get(path) or (option_table.ROOT / path).read_text()
        texts[path] = replace_part(text, path, begin, end, list(lines_of(forms, entries)))
    return texts


def main():
    check = "--check" in sys.argv
    programs = [argument for argument in sys.argv[1:] if argument != "--check"]
    texts = generate(*option_table.read(*programs))
    stale = False
    for path, text in texts.items():
        old = (option_table.ROOT / path).read_text()
        if old == text:
            continue
        stale = True
        if check:
            print(
                *difflib.unified_diff(
                    old.splitlines(), text.splitlines(), path, "generated", lineterm="", n=0
                ),
                sep="\n",
            )
        else:
            (option_table.ROOT / path).write_text(text)
            print(f"written: {path}")
    if check and stale:
        print("Run scripts/generate_options.py.")
        sys.exit(1)


if __name__ == "__main__":
    main()
