# SPDX-License-Identifier: GPL-3.0-or-later
"""A manual page out of a Program and of further sections."""
import re

WORD = re.compile(r"(--[a-z][a-z-]*|[A-Z]{2,}(?![a-z]))")


def escaped(text):
    text = text.replace("\\", "\\e").replace("-", "\\-").replace("~", "\\(ti")
    return "\\&" + text if text.startswith((".", "'")) else text


def marked(text):
    """Options bold, what stands for something else in italics."""
    parts = []
    for part in WORD.split(text):
        if part.startswith("--"):
            parts.append("\\fB" + escaped(part) + "\\fR")
        elif WORD.fullmatch(part):
            parts.append("\\fI" + escaped(part) + "\\fR")
        else:
            parts.append(escaped(part))
    line = "".join(parts)
    return "\\&" + line if line.startswith((".", "'")) else line


def synopsis(program):
    lines = []
    for usage in program.usages:
        words = usage.split(" ")
        bold = words[0]
        rest = usage[len(bold):]
        lines.append("\\fB" + escaped(bold) + "\\fR" + marked(rest))
    return "\n.br\n".join(lines) + "\n"


def written(parts):
    text = []
    for kind, content in parts:
        if kind == "paragraph":
            text.append(".PP\n" + marked(content) + "\n")
            continue
        for term, meaning in content:
            text.append(".TP\n\\fB" + marked(term).replace("\\fR", "\\fB") + "\\fR\n" + marked(meaning) + "\n")
    return "".join(text)


def verb_section(verb, purpose):
    short = verb.name.split(" ", 1)[1]
    text = [f".SS {escaped(short)} \\- {escaped(purpose)}\n", ".PP\n", synopsis(verb), written(verb.blocks)]
    if verb.exit_status:
        text.append(".PP\nCode de retour : " + marked(verb.exit_status) + "\n")
    return "".join(text)


def page(program, extra, version, date):
    name = program.name
    (name_block,) = extra["NOM"]
    title, _, purpose = name_block[1].partition(" - ")
    text = ["'\\\" -*- coding: UTF-8 -*-\n",
            ".\\\" Made from the program's --help.\n",
            f".TH {name.upper()} 1 {date} \"Tavrollo {version}\" \"Commandes de l'utilisateur\"\n",
            ".nh\n.ad l\n",
            f".SH NOM\n{escaped(title)} \\- {escaped(purpose)}\n",
            ".SH SYNOPSIS\n", synopsis(program)]
    if program.verbs:
        text += [".SH DESCRIPTION\n", written(extra["DESCRIPTION"]), ".SH VERBES\n"]
        text += [verb_section(verb, program.purposes[verb.name.split(" ", 1)[1]]) for verb in program.verbs]
    else:
        paragraphs = [part for part in program.blocks if part[0] == "paragraph"]
        tables = [part for part in program.blocks if part[0] == "table"]
        text += [".SH DESCRIPTION\n", written(paragraphs), ".SH OPTIONS\n", written(tables)]
    for heading, parts in extra.items():
        if heading not in ("NOM", "DESCRIPTION"):
            text += [f".SH \"{heading}\"\n", written(parts)]
    return "".join(text)
