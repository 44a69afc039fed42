"""What the sources say of the program's outside: its options, the ends of a run, and the tables of the readers."""
import re

MIN_OPTIONS = 45


def body(source, name):
    """The text of the function `name`, from its head to the brace that closes it in the first column."""
    found = re.search(rf"^[^\n]*\b{name}\([^;]*?\) \{{\n.*?^\}}$", source, re.S | re.M)
    if not found:
        raise LookupError(f"no function {name}")
    return found.group(0)


def cases(source, name):
    return re.findall(r"case '(\w)':", body(source, name))


def compared(source, name):
    """The characters that the function compares one character of the option with."""
    return re.findall(r"(?:\]|number) == '(\w)'", body(source, name))


def option_forms(root):
    """Every form of an option that does something: -f, -fm, -fma, ... A number as a part of it is N."""
    scan = (root / "src/app/options.cpp").read_text()
    files = (root / "src/app/file_options.cpp").read_text()
    letters = re.findall(r"case '(.)'", body(scan, "take_option"))
    forms = {f"-{letter}" for letter in letters} - {"-a"}
    forms |= set(re.findall(r'strncmp\(option, "(-\w+)"', body(scan, "take_columnize_flag")))
    forms |= {f"-f{letter}" for letter in cases(files, "crv_TakeFileOption")}
    forms |= {f"-fm{letter}" for letter in cases(files, "take_madymo_option")}
    forms |= {f"-t{letter}" for letter in cases(scan, "take_title_or_time")}
    forms |= {f"-p{digit}" for digit in compared(scan, "take_chart")}
    forms |= {f"-x{letter}" for letter in compared(scan, "take_x")}
    forms |= {f"-y{letter}" for letter in compared(scan, "take_y")}
    forms |= {f"-yl{letter}" for letter in compared(scan, "take_y_label")}
    first, last = re.search(r"number < '(\d)' \|\| number > '(\d)'", body(scan, "take_story")).groups()
    forms |= {f"-s{digit}" for digit in range(int(first), int(last) + 1)}
    if "utl_ToInt(number)" in body(files, "take_column_file"):
        forms.add("-fpN")
    if "utl_ToInt({&number, 1})" in body(scan, "take_y_label"):
        forms.add("-ylN")
    missed = [letter for letter in letters if not any(form.startswith(f"-{letter}") for form in forms)]
    if missed or len(forms) < MIN_OPTIONS:
        raise LookupError(f"the options of the scan were not found: {missed} {sorted(forms)}")
    return forms


def ends(root):
    """Every end of a run: (file, status as the file has it, number)."""
    found = []
    for path in sorted((root / "src").rglob("*.*")):
        source = path.read_text()
        name = path.relative_to(root / "src").as_posix()
        found += [(name, constant, int(value)) for constant, value in
                  re.findall(r"static constexpr int (status_\w+) = (\d+);", source)]
        given = [args.rsplit(",", 1)[-1].strip() for args in re.findall(r"utl_Quit(?:WithError)?\(([^()]+)\)", source)]
        found += [(name, status, int(status)) for status in sorted(set(given)) if status.isdigit()]
        strange = [status for status in given if not re.fullmatch(r"\d+|status_\w+|(int )?status", status)]
        if strange:
            raise LookupError(f"{name}: what status is {strange}?")
    plain_end = re.search(r"return (\d+);\n\}\s*$", (root / "src/app/main.cpp").read_text())
    found.append(("app/main.cpp", "return 0", int(plain_end.group(1))))
    return found


def texts(source, table):
    return re.findall(r'"([^"]*)"', re.search(rf"{table}\[\] = \{{(.*?)\}};", source, re.S).group(1))


def number(source, name):
    return int(re.search(rf"\b{name} = (\d+);", source).group(1))
