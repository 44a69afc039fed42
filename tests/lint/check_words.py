#!/usr/bin/env python3
"""Comments and documents use the words of the writing guide in CONTRIBUTING.md.

Messages of the program are exempt: string literals, and in documents text in backticks and blocks
of code.
"""
import io
import re
import tokenize

import source_files

# Banned words (regular expressions) and their replacements.
INSTEAD = {
    "whoever": "users who, anyone who",
    "behind": "after",
    "besides": "also",
    r"mend(?:s|ed|ing)?": "fix",
    "told of": "reported",
    "in vain": "without effect",
    "no matter": "regardless of, ignored",
    r"(?<!there )is no": "is not a",
    "but for": "except",
    "fewest": "min",
    "strangers?": "untrusted",
    r"pass(?:es|ed|ing)? over": "skip",
    "without its end": "unterminated",
    "that (?:is|are) not there": "missing",
    "folders?": "directory",
}
BANNED = re.compile("|".join(rf"(?P<w{k}>\b{word}\b)" for k, word in enumerate(INSTEAD)), re.I)
# Windows calls directories folders.
WINDOWS = re.compile(r"windows|win32|mingw", re.I)


def blank(match):
    return re.sub(r"[^\n]", " ", match.group())


def without_quotes(text):
    return re.sub(r'`[^`\n]*`|"[^"\n]+"', blank, text)


def comments_of_code(text):
    """C++ with everything but comments blanked."""
    kept = re.compile(r"//[^\n]*|/\*.*?\*/"
                      r'|(?P<literal>"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\')', re.S)
    result, at = [], 0
    for match in kept.finditer(text):
        result.append(re.sub(r"[^\n]", " ", text[at:match.start()]))
        result.append(blank(match) if match.group("literal") else without_quotes(match.group()))
        at = match.end()
    return "".join(result) + re.sub(r"[^\n]", " ", text[at:])


def comments_of_python(text):
    """Comments and docstrings, each in its line."""
    lines = [""] * (text.count("\n") + 2)
    before = tokenize.INDENT
    for token in tokenize.generate_tokens(io.StringIO(text).readline):
        if token.type == tokenize.COMMENT:
            lines[token.start[0]] += token.string
        elif token.type == tokenize.STRING and token.string.startswith('"""') and before in STARTS:
            for number, line in enumerate(token.string.split("\n"), token.start[0]):
                lines[number] += line
        if token.type != tokenize.COMMENT:
            before = token.type
    return without_quotes("\n".join(lines[1:]))


STARTS = (tokenize.INDENT, tokenize.NEWLINE, tokenize.NL, tokenize.DEDENT, tokenize.ENCODING)


def comments_after_hash(text):
    """Comments of shell and CMake scripts: lines that are nothing else, and ends of lines."""
    return "\n".join("".join(re.findall(r"(?:^|\s)#.*$", line)) for line in text.split("\n"))


def prose(text):
    text = re.sub(r"^```.*?^```$", blank, text, flags=re.S | re.M)
    text = re.sub(r"``.*?``|`[^`\n]*`", blank, text)
    text = re.sub(r"\]\([^)\n]*\)", blank, text)
    return re.sub(r"^(?: {4}|\t).*$", blank, text, flags=re.M)


READERS = (((*source_files.CODE, *source_files.WEB), comments_of_code),
           (source_files.PYTHON, comments_of_python),
           ((*source_files.SHELL, *source_files.CMAKE), comments_after_hash),
           (source_files.PROSE, prose))


def faults_of(name, words_of):
    text = words_of((source_files.ROOT / name).read_text())
    for number, line in enumerate(text.split("\n"), 1):
        for match in BANNED.finditer(line):
            word = list(INSTEAD)[int(match.lastgroup[1:])]
            if word == "folders?" and (WINDOWS.search(name) or WINDOWS.search(line)):
                continue
            yield f"{name}:{number}: \"{match.group()}\": write {INSTEAD[word]}"


def main():
    found = [(name, reader) for patterns, reader in READERS
             for name in source_files.files(*patterns)]
    faults = [fault for name, reader in found for fault in faults_of(name, reader)]
    source_files.finish(faults if found else ["no files"])


main()
