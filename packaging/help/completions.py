# SPDX-License-Identifier: GPL-3.0-or-later
"""The completions of bash, zsh and fish out of a Program."""
import re

FOLDERS = {"DOSSIER", "SAUVEGARDE", "SOURCE"}
FILES = {"FICHIER", "BASE"}
HEAD = "# Made from the program's --help.\n"


def kind(name, help_text):
    """What stands for an argument or an option's value: "folder", "file", a list of words, or None."""
    if name in ("SENS", "TYPE"):
        return words_for(name, help_text)
    if name == "SOURCE" and "TYPE" in help_text.arguments():
        return None  # a barcode's text
    if name in FOLDERS:
        return "folder"
    return "file" if name in FILES else None


def words_for(name, help_text):
    if name == "SENS":
        (meaning,) = [each[2] for each in help_text.options() if each[1] == name]
        plain = re.sub(r"\(.*?\)", "", meaning)
        return [word.strip() for word in re.split(r",| ou ", plain)]
    return [term.split(", ")[1] for term, _ in help_text.table() if re.match(r"\d, \w", term)]


def short_name(help_text):
    return help_text.name.split(" ", 1)[1]


# bash

def bash_words(words):
    return "COMPREPLY=($(compgen -W $'" + "\\n".join(words) + "' -- \"$word\"))"


def bash_action(what):
    if what == "folder":
        return 'compopt -o filenames; COMPREPLY=($(compgen -d -- "$word"))'
    if what == "file":
        return 'compopt -o filenames; COMPREPLY=($(compgen -f -- "$word"))'
    return bash_words(what) if what else ":"


def bash_body(help_text, first, indent):
    """`first`: the number of the first word that may be an argument."""
    options = help_text.options()
    valued = [(name, value) for name, value, _ in options if value]
    lines = []
    if valued:
        lines += ["case $before in"]
        lines += [f"  {name}) {bash_action(kind(value, help_text))}; return ;;" for name, value in valued]
        lines += ["esac"]
    if options:
        lines += ["if [[ $word == -* ]]; then", "  " + bash_words(each[0] for each in options), "  return", "fi"]
    if help_text.arguments():
        lines += [" ".join(["_tavrollo_argument", str(first)] + [name for name, _ in valued]),
                  "case $REPLY in"]
        lines += [f"  {index}) {bash_action(kind(name, help_text))} ;;"
                  for index, name in enumerate(help_text.arguments())]
        lines += ["esac"]
    return "".join(indent + line + "\n" for line in lines)


# Names of files are split at line breaks alone, and so are the lists of words.
BASH_BEGIN = """\
# shellcheck shell=bash disable=SC2207
# REPLY: how many arguments that are no options stand in front of the word that is being written.
# $1: the first word that counts. Further: the options that take a value.
_tavrollo_argument() {
  local IFS=" " index
  local valued=" ${*:2} "
  REPLY=0
  for ((index = $1; index < COMP_CWORD; ++index)); do
    case ${COMP_WORDS[index]} in
      -*) [[ $valued != *" ${COMP_WORDS[index]} "* ]] || ((++index)) ;;
      *) ((++REPLY)) ;;
    esac
  done
}

FUNCTION() {
  local REPLY word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
  local IFS=$'\\n'
  COMPREPLY=()
"""


def bash(program):
    function = "_" + program.name
    text = [HEAD, BASH_BEGIN.replace("FUNCTION", function)]
    if program.verbs:
        names = [short_name(verb) for verb in program.verbs] + [each[0] for each in program.options()]
        text += ["  if ((COMP_CWORD == 1)); then\n", f"    {bash_words(names)}\n", "    return\n", "  fi\n",
                 "  case ${COMP_WORDS[1]} in\n"]
        for verb in program.verbs:
            text += [f"    {short_name(verb)})\n", bash_body(verb, 2, "      "), "      ;;\n"]
        text.append("  esac\n")
    else:
        text.append(bash_body(program, 1, "  "))
    return "".join(text + ["}\n", f"complete -F {function} {program.name}\n"])


# zsh

def zsh_quoted(text):
    return text.replace("'", "'\\''").replace("[", "\\[").replace("]", "\\]").replace(":", "\\:")


def zsh_action(name, what):
    if what == "folder":
        return f":{name}:_files -/"
    if what == "file":
        return f":{name}:_files"
    return f":{name}:({' '.join(what)})" if what else f":{name}: "


def zsh_arguments(help_text):
    specs = []
    for name, value, meaning in help_text.options():
        spec = f"{name}[{zsh_quoted(meaning)}]" if meaning else name
        specs.append(spec + (zsh_action(value, kind(value, help_text)) if value else ""))
    for index, name in enumerate(help_text.arguments(), 1):
        specs.append(f"{index}{zsh_action(name, kind(name, help_text))}")
    return "_arguments" + "".join(f" \\\n    '{spec}'" for spec in specs) + "\n"


def zsh(program):
    text = [f"#compdef {program.name}\n", HEAD]
    if not program.verbs:
        return "".join(text + [zsh_arguments(program)])
    text.append("if ((CURRENT == 2)); then\n  local -a verbs=(\n")
    for verb in program.verbs:
        purpose = program.purposes[short_name(verb)]
        text.append(f"    '{short_name(verb)}:{zsh_quoted(purpose)}'\n")
    text.append("  )\n  _describe verbe verbs\n  return\nfi\n")
    text.append("local verb=$words[2]\nshift words\n((CURRENT--))\ncase $verb in\n")
    for verb in program.verbs:
        text.append(f"  {short_name(verb)}) {zsh_arguments(verb)}    ;;\n")
    return "".join(text + ["esac\n"])


# fish

def fish_quoted(text):
    return "'" + text.replace("\\", "\\\\").replace("'", "\\'") + "'"


def fish_value(what):
    if what == "folder":
        return " -x -a '(__fish_complete_directories)'"
    if what == "file":
        return " -r -F"
    return f" -x -a {fish_quoted(' '.join(what))}" if what else " -x"


def fish_lines(command, help_text, condition):
    lines = []
    for name, value, meaning in help_text.options():
        line = f"complete -c {command}{condition} -l {name[2:]}"
        line += fish_value(kind(value, help_text)) if value else ""
        lines.append(line + (f" -d {fish_quoted(meaning)}" if meaning else ""))
    kinds = [kind(name, help_text) for name in help_text.arguments()]
    if "file" in kinds:
        lines.append(f"complete -c {command}{condition} -F")
    elif "folder" in kinds:
        lines.append(f"complete -c {command}{condition} -a '(__fish_complete_directories)'")
    for words in kinds:
        if isinstance(words, list):
            lines.append(f"complete -c {command}{condition} -a {fish_quoted(' '.join(words))}")
    return lines


def fish(program):
    command = program.name
    lines = [HEAD.rstrip(), f"complete -c {command} -f"]
    none = " -n __fish_use_subcommand" if program.verbs else ""
    for verb in program.verbs:
        purpose = program.purposes[short_name(verb)]
        lines.append(f"complete -c {command}{none} -a {short_name(verb)} -d {fish_quoted(purpose)}")
    if program.verbs:
        lines += [f"complete -c {command}{none} -l {name[2:]}" for name, _, _ in program.options()]
    else:
        lines += fish_lines(command, program, none)
    for verb in program.verbs:
        lines += fish_lines(command, verb, f" -n '__fish_seen_subcommand_from {short_name(verb)}'")
    return "\n".join(lines) + "\n"
