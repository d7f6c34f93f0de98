"""The mutants of a source or header, and the marks of those that change nothing a test can see."""

import dataclasses
import functools
import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parents[2]

# One token for another. Templates and includes keep their angle brackets: blanks stand around a
# comparison in this code.
SWAPS = [
    (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "),
    (r" == ", " != "), (r" != ", " == "), (r" && ", " || "), (r" \|\| ", " && "),
    (r" \+ ", " - "), (r" - ", " + "), (r" \+= ", " -= "), (r" -= ", " += "),
    (r"\btrue\b", "false"), (r"\bfalse\b", "true"), (r"\bTRUE\b", "FALSE"), (r"\bFALSE\b", "TRUE"), (r"\+\+", "--"), (r"--", "++"),
]
# Conversions that take the same arguments, in pairs: each is replaced by the other one.
SIBLINGS = [
    ("toInt", "toUInt64"), ("toFloat", "toDouble"), ("getString", "getWString"), ("readText", "readWText"),
    ("narrowText", "wideText"), ("parsedNumber", "parsedDecimal"), ("stoul", "stoull"), ("strtol", "strtoul"),
]
SIBLING_OF = {**dict(SIBLINGS), **{other: one for one, other in SIBLINGS}}
# One more element of room: no test can tell, and no user.
CAPACITY = re.compile(r"SmallVector<|\.reserve\(")
# Messages that have none take any.
UNUSED_PARAMETERS = re.compile(r"\bWM_GETFONT, 0, 0\b")
NUMBER = re.compile(r"(?<![\w.'])(\d+)(?![\w.'])")
CONDITION = re.compile(r"\bif \((?!constexpr)(.+)\) (return|\{|break|continue)")
CALL = re.compile(r"^\s+(?:::)?[A-Za-z_][\w.:>\-]*\(.*\);$")
# A statement of one line that declares nothing: a call, an assignment, an increment or a delete.
EFFECT = re.compile(r"^ +(?!break;|continue;|return;)(?:delete |\+\+|--|\*|::)?[A-Za-z_][\w.:\->\[\]]*(?:\(.*\)|\[.*\])?[\w.\->]*"
                    r"(?: [-+|&]?= .*|\(.*\))?;$")
DEFINITION = re.compile(r"^[\w:<>*&\s\[\]]*?\b(\w+)::~?\w+\(")
DECLARED_CLASS = re.compile(r"^(?:class|struct) (\w+)( final)?(?: : (.*?))? \{", re.MULTILINE)
MARK = re.compile(r"// Equally right (.+?): \S")
NOT_CALLED = {"if", "for", "while", "switch", "return", "sizeof", "alignof", "catch", "static_cast",
              "reinterpret_cast", "const_cast", "static_assert", "assert", "noexcept", "alignas", "decltype"}


@dataclasses.dataclass(frozen=True)
class Mutant:
    """Lines of a file, and what stands there instead. Marks name the mutant by `how`."""

    file: str
    line: int        # of the first line, from 1
    column: int
    before: tuple
    after: tuple
    how: str         # "with >=", "without it", "negated", "after the next": see docs/verification.md

    def change(self):
        before, after = (" / ".join(line.strip() for line in lines) for lines in (self.before, self.after))
        return f"{before}  ->  {after or '(nothing)'}   [{self.how}]"

    def applied_to(self, lines):
        first = self.line - 1
        return [*lines[:first], *self.after, *lines[first + len(self.before):]]


def lines_of(file):
    return (ROOT / file).read_text(encoding="utf-8").splitlines()


def code_of(line):
    """A line without the comment at its end."""
    for match in re.finditer(r"//", line):
        if outside_texts(line, match.start()):
            return line[:match.start()].rstrip()
    return line.rstrip()


def is_code(line):
    text = line.strip()
    return bool(text) and not text.startswith(("//", "#", "static_assert", "namespace", "using "))


def outside_texts(line, position):
    """Whether a position of the line stands in code, not in a text."""
    return line[:position].replace('\\"', "").count('"') % 2 == 0


def arguments_in(code):
    """(start, end) of each argument of each call that begins and ends on the line."""
    found = []
    for call in re.finditer(r"([A-Za-z_]\w*)\(", code):
        if call.group(1) in NOT_CALLED or not outside_texts(code, call.start()):
            continue
        depth, start, spans = 0, call.end(), []
        for at in range(call.end(), len(code)):
            letter = code[at] if outside_texts(code, at) else " "
            if letter in ",)" and depth == 0:
                spans.append((start, at))
                start = at + 1
                if letter == ")":
                    found += spans
                    break
            depth += (letter in "([{") - (letter in ")]}")
    return found


def pointers_in(text):
    """The names that a text declares as pointers, handles, arrays of characters or functions that give one.
    A few too many: what the compiler then refuses is no mutant."""
    return set(re.findall(r"(?:\* ?(?:const )?|Handle (?:const )?|char(?:\d+)?(?:_t)? (?=\w+\[))(\w+)", text))


def may_be_a_pointer(argument, pointers):
    """Compiling takes time, so only what looks like one: an address, or a name that is declared as one."""
    if argument.startswith("&") or argument == "this":
        return True
    while re.search(r"\([^()]*\)", argument):
        argument = re.sub(r"\([^()]*\)", "", argument)
    name = re.search(r"^[\w.:>-]*?(\w+)$", argument)
    return bool(name) and (name.group(1) in pointers or name.group(1) in ("c_str", "get", "data"))


@functools.lru_cache(maxsize=None)
def headers():
    return [path.read_text(encoding="utf-8") for path in sorted(ROOT.glob("*/*.h"))]


def virtual_functions_in(texts):
    """The names of the virtual functions of each class and of its bases; none for a final class, whose calls
    are direct anyway."""
    own, bases, final = {}, {}, set()
    for text in texts:
        heads = list(DECLARED_CLASS.finditer(text))
        for head, following in zip(heads, [*heads[1:], None]):
            body = text[head.end():following.start() if following else len(text)]
            name = head.group(1)
            own[name] = {*re.findall(r"\bvirtual [^;(]*?\b(\w+)\(", body),
                         *re.findall(r"\b(\w+)\([^;{]*\)[^;{]*\boverride\b", body)}
            bases[name] = re.findall(r"(\w+)(?=,|$|<)", head.group(3) or "")
            if head.group(2):
                final.add(name)

    def all_of(name, seen=()):
        inherited = (all_of(base, (*seen, name)) for base in bases.get(name, ()) if base not in seen)
        return own.get(name, set()).union(*inherited)

    return {name: set() if name in final else all_of(name) - own.keys() for name in own}


def mutants_of_line(file, number, line, pointers, owner, virtuals):
    found, code = [], code_of(line)

    def add(start, end, text, how):
        if outside_texts(line, start):
            found.append(Mutant(file, number, start, (line,), (line[:start] + text + line[end:],), how))

    for pattern, other in SWAPS:
        for match in re.finditer(pattern, code):
            add(match.start(), match.end(), other, f"with {other.strip()}")
    numbers = UNUSED_PARAMETERS.sub(lambda match: "_" * len(match.group()), code)
    for match in NUMBER.finditer(numbers) if not CAPACITY.search(code) else ():
        more = str(int(match.group(1)) + 1)
        add(match.start(), match.end(), more, f"with {more}")
    condition = CONDITION.search(code)
    if condition and condition.group(1).count("(") == condition.group(1).count(")"):
        add(condition.start(1), condition.end(1), f"!({condition.group(1)})", "negated")
    if code.strip() == "break;" or (CALL.match(code) and
                                    not code.strip().startswith(("return", "throw", "static_cast"))):
        found.append(Mutant(file, number, 0, (line,), (), "without it"))
    for start, end in arguments_in(code):
        start += len(code[start:end]) - len(code[start:end].lstrip())
        if code[:1] == " " and may_be_a_pointer(code[start:end], pointers):
            add(start, end, "nullptr", f"with nullptr for {code[start:end]}")
    for match in re.finditer(r"\b(\w+)(?=\()", code):
        if match.group(1) in SIBLING_OF and code[:1] == " ":
            add(*match.span(), SIBLING_OF[match.group(1)], f"with {SIBLING_OF[match.group(1)]}")
    for match in re.finditer(r"(?<![\w.:>~])(?:this->)?(\w+)\(", code):
        if match.group(1) in virtuals and code[:1] == " ":
            add(match.start(), match.end(), f"{owner}::{match.group(1)}(", "with a direct call")
    return [dataclasses.replace(m, how=m.how + again(m, found[:place])) for place, m in enumerate(found)]


def again(mutant, earlier):
    """What tells apart two mutants of one line that would have the same words."""
    count = sum(other.how == mutant.how for other in earlier)
    return f" ({count + 1})" if count else ""


# What a call sets: (OBJECT, NAME) of a bag's value or of a control, and (FUNCTION) of a control's quality.
NAME = r"((?:\w+::)?k[A-Z]\w*|IDC_\w+)[,)]"
NAMED_SETTER = re.compile(rf"^ *(?:(?:\w+::)?(?:put|set|show|choose)\w*\()?([\w.]+)(?:, |\.removeProperty\(){NAME}")
CONTROL_SETTER = re.compile(r"^ *dialog_controls::(setText|setFont|makeLink|show)(?:IfAny)?\(")


def change_nothing_in_either_order(one, other):
    """Two assignments without calls, of which neither reads what the other one writes, or two calls that set
    values of one object under different names, or different qualities of controls."""
    named = NAMED_SETTER.match(one), NAMED_SETTER.match(other)
    if all(named) and named[0].group(1) == named[1].group(1) and named[0].group(2) != named[1].group(2):
        return True
    controls = CONTROL_SETTER.match(one), CONTROL_SETTER.match(other)
    if all(controls) and controls[0].group(1) != controls[1].group(1):
        return True
    assignment = re.compile(r" [-+|&]?= ")

    def plain(text):
        return "(" not in text and assignment.search(text)

    def written(text):
        return re.escape(assignment.split(text)[0].strip())

    return (plain(one) and plain(other) and not re.search(rf"\b{written(one)}\b", other)
            and not re.search(rf"\b{written(other)}\b", one))


def exchanged_statements(file, lines, number):
    """A statement and the next one, each on one line, in the other order."""
    first, second = lines[number - 1], lines[number] if number < len(lines) else ""
    one, other = code_of(first), code_of(second)
    before = next((code_of(line) for line in reversed(lines[:number - 1]) if code_of(line)), "")
    if not (EFFECT.match(one) and EFFECT.match(other) and before.endswith((";", "{", "}", ":"))):
        return []
    if one == other or change_nothing_in_either_order(one, other):
        return []
    return [Mutant(file, number, 0, (first, second), (second, first), "after the next")]


def exchanged_virtuals(file, lines):
    """Two neighbouring virtual functions of a header in the other order, as their class's table has them."""
    declared, at = [], 0
    while at < len(lines):
        code, end = lines[at], at
        if re.match(r"\s+(\[\[nodiscard\]\] )?virtual ", code):
            while not re.search(r"[;{}]$", code_of(lines[end])):
                end += 1
            if code_of(lines[end]).endswith("{"):
                brace = code[:len(code) - len(code.lstrip())] + "}"
                while lines[end] != brace:
                    end += 1
            declared.append((at, end + 1))
            at = end
        elif re.match(r"\s*((class|struct) \w+.*\{|\};)", code):
            declared.append(None)
        at += 1
    found = []
    for one, other in zip(declared, declared[1:]):
        if one and other:
            before = tuple(lines[one[0]:other[1]])
            after = (*lines[other[0]:other[1]], *lines[one[1]:other[0]], *lines[one[0]:one[1]])
            found.append(Mutant(file, one[0] + 1, 0, before, after, "after the next"))
    return found


def ends_switch(line, following):
    """Whether a break changes nothing: it stands last in its switch, two levels in from the brace, or before
    a default that does nothing."""
    if line.strip() != "break;":
        return False
    depth = len(line) - len(line.lstrip())
    rest = " ".join(text.strip() for text in following)
    return following[:1] == [" " * (depth - 8) + "}"] or re.match(r"(} )?default: break; }", rest) is not None


def mutants_of(file, lines=None, declarations=None):
    lines = lines_of(file) if lines is None else lines
    declarations = headers() if declarations is None else declarations
    if file.endswith(".h"):
        return exchanged_virtuals(file, lines)
    mutants, owner, fenced = [], "", False
    pointers = pointers_in("\n".join([*declarations, *lines]))
    virtuals = virtual_functions_in(declarations)
    for number, line in enumerate(lines, 1):
        fenced = (fenced or "mutate: off" in line) and "mutate: on" not in line
        definition = DEFINITION.match(line)
        owner = definition.group(1) if definition else "" if line.startswith("}") else owner
        if is_code(line) and not fenced and not ends_switch(line, lines[number:number + 4]):
            mutants += mutants_of_line(file, number, line, pointers, owner, virtuals.get(owner, ()))
            mutants += exchanged_statements(file, lines, number)
    return mutants


def marks_in(lines):
    """(line, how) of each mark; one on lines of its own speaks of the next line of code."""
    marks = set()
    for number, line in enumerate(lines, 1):
        mark = MARK.search(line)
        if mark:
            at = number
            while not code_of(lines[at - 1]).strip():
                at += 1
            marks.update((at, how) for how in mark.group(1).split(" or "))
    return marks


def unmarked(file, mutants, lines=None):
    """The mutants of a file that are to be judged, and the marks that fit none of them."""
    marks = marks_in(lines_of(file) if lines is None else lines)
    fitting = {(mutant.line, mutant.how) for mutant in mutants}
    return [m for m in mutants if (m.line, m.how) not in marks], sorted(marks - fitting)
