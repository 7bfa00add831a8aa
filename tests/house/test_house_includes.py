#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Every rule of house_includes.py is broken once, in a small tree of sources made for it."""
import contextlib
import io
import pathlib
import tempfile
import unittest

import house_includes

LICENCE = "// SPDX-License-Identifier: GPL-3.0-or-later\n"


def run_over(tree):
    """(exit status, printed lines) for sources given as {path: text}; the licence is added."""
    with tempfile.TemporaryDirectory() as folder:
        for path, text in tree.items():
            file = pathlib.Path(folder, path)
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_text(LICENCE + text, encoding="utf-8")
        printed = io.StringIO()
        with contextlib.redirect_stdout(printed), contextlib.redirect_stderr(printed):
            status = house_includes.main([folder])
        return status, printed.getvalue().splitlines()


def include(*names):
    return "".join(f'#include "{name}"\n' for name in names)


class HouseIncludes(unittest.TestCase):
    def breaks(self, tree, *sentences):
        """The tree breaks exactly the rules whose lines hold these words."""
        status, lines = run_over(tree)
        self.assertEqual(1, status, lines)
        self.assertEqual(len(sentences), len(lines) - 1, lines)
        for sentence in sentences:
            self.assertTrue(any(sentence in line for line in lines), (sentence, lines))

    def stands(self, tree):
        status, lines = run_over(tree)
        self.assertEqual(0, status, lines)

    def test_a_room_may_include_the_rooms_above_it_and_itself(self):
        self.stands({"text/Text.h": "", "bridge/A.h": include("text/Text.h"),
                     "bridge/A.cpp": include("bridge/A.h", "text/Text.h")})

    def test_a_room_may_not_include_a_room_below_it(self):
        for above, below in zip(house_includes.ROOMS, house_includes.ROOMS[1:]):
            with self.subTest(above=above, below=below):
                self.breaks({f"{below}/B.h": "", f"{above}/A.cpp": include(f"{below}/B.h")},
                            f"{above}/A.cpp:2: {above} includes {below}/B.h, but {below} is further")
                self.stands({f"{above}/A.h": "", f"{below}/B.cpp": include(f"{above}/A.h")})

    def test_angle_brackets_do_not_hide_a_room(self):
        self.breaks({"app/B.h": "", "text/A.cpp": "#include <app/B.h>\n"}, "text includes app/B.h")

    def test_tables_and_header_templates_are_looked_at_too(self):
        self.breaks({"app/B.h": "", "text/Table.inc": include("app/B.h")}, "text/Table.inc:2:")
        self.breaks({"app/B.h": "", "text/Version.h.in": include("app/B.h")}, "text/Version.h.in:2:")

    def test_files_may_not_include_each_other_in_a_circle(self):
        self.breaks({"text/A.h": include("text/B.h"), "text/B.h": include("text/C.h"),
                     "text/C.h": include("text/A.h")},
                    "text/C.h:2: a circle: text/A.h -> text/B.h -> text/C.h -> text/A.h")

    def test_a_file_may_not_include_itself(self):
        self.breaks({"text/A.h": include("text/A.h")}, "a circle: text/A.h -> text/A.h")

    def test_two_ways_to_one_file_are_no_circle(self):
        self.stands({"text/A.h": include("text/B.h", "text/C.h"), "text/B.h": include("text/D.h"),
                     "text/C.h": include("text/D.h"), "text/D.h": ""})

    def test_qt_stays_in_the_windows(self):
        for path in ("config/A.h", "windows/A.cpp", "tools/A.cpp", "text/qt.h"):
            for header in ("QString", "QtCore/QString", "QtGlobal", "qglobal.h"):
                with self.subTest(path=path, header=header):
                    self.breaks({path: f"#include <{header}>\n"},
                                f"{path}:2: Qt ({header}) outside the windows")

    def test_windows_may_use_qt(self):
        for path in ("config/frmA.h", "windows/qt/A.cpp", "tray/A.h", "app/main.cpp"):
            with self.subTest(path=path):
                self.stands({path: "#include <QString>\n"})

    def test_qt_does_not_come_in_through_another_file(self):
        self.breaks({"text/qt/Q.h": "#include <QString>\n", "text/qt/R.h": include("text/qt/Q.h"),
                     "config/A.cpp": include("text/qt/R.h")},
                    "config/A.cpp:2: Qt outside the windows, through text/qt/R.h")

    def test_a_designed_window_counts_as_qt(self):
        self.breaks({"config/A.cpp": include("ui_frmA.h")}, "Qt (ui_frmA.h) outside the windows")

    def test_the_operating_system_is_asked_for_in_platform_alone(self):
        for condition in ("#ifdef _WIN32", "#ifndef WIN32", "#if defined(__linux__)", "#ifdef Q_OS_WIN",
                          "# if defined(A) || \\\n  defined(__APPLE__)", "#if 0\n#elif defined Q_OS_UNIX"):
            with self.subTest(condition=condition):
                tail = "\n#endif\n#include <string>\n"
                self.breaks({"config/A.cpp": condition + tail}, "asks for the operating system")
                self.stands({"platform/A.cpp": condition + tail})

    def test_other_conditions_are_nobodys_business(self):
        self.stands({"config/A.cpp": "#include <csignal>\n#ifdef SIGPIPE\n#endif\n"})

    def test_what_is_chosen_when_building_is_not_included_by_name(self):
        for system in ("linux", "windows"):
            for room in ("platform", "tray"):
                name = f"{room}/{system}/A.h"
                with self.subTest(name=name):
                    self.breaks({name: "", "tools/B.cpp": include(name)},
                                f"tools/B.cpp:2: {name} is chosen when building")
        self.breaks({"tray/linux/A.h": "", "tray/B.cpp": include("tray/linux/A.h")}, "tray/B.cpp:2:")
        self.breaks({"platform/linux/A.h": "", "tools/windows/B.cpp": include("platform/linux/A.h")},
                    "tools/windows/B.cpp:2:")

    def test_the_folders_of_one_system_may_use_each_other(self):
        self.stands({"platform/linux/A.h": "", "platform/linux/A.cpp": include("platform/linux/A.h"),
                     "platform/B.cpp": include("platform/linux/A.h"),
                     "tools/linux/B.cpp": include("platform/linux/A.h")})

    def test_the_room_named_windows_is_no_system(self):
        self.stands({"windows/A.h": "", "app/B.cpp": include("windows/A.h")})

    def test_includes_are_written_with_their_room(self):
        self.breaks({"text/A.h": "", "text/A.cpp": include("A.h")}, "write the room in front of it")
        self.breaks({"text/A.h": "", "config/A.cpp": include("../text/A.h")},
                    "write the room in front of it")

    def test_an_included_file_must_exist(self):
        self.breaks({"text/A.cpp": include("text/Gone.h")}, "text/Gone.h does not exist")
        self.stands({"platform/Version.h.in": "", "app/A.cpp": include("platform/Version.h")})

    def test_an_include_must_name_its_file(self):
        self.breaks({"text/A.cpp": "#define NAME <string>\n#include NAME\n#include <string>\n"},
                    "text/A.cpp:3: an include that names no file")

    def test_a_folder_that_is_no_room_is_refused(self):
        self.breaks({"cellar/A.cpp": "#include <string>\n"}, "cellar is no room")

    def test_comments_and_strings_include_nothing(self):
        self.stands({"app/B.h": "", "text/A.cpp": "#include <string>\n"
                     '// #include "app/B.h"\n/*\n#include "app/B.h"\n*/\n'
                     'auto a = R"(\n#include "app/B.h"\n)";\n'})

    def test_what_looks_like_a_comment_hides_nothing(self):
        self.breaks({"app/B.h": "", "text/A.cpp":
                     'auto a = "/*"; char b = \'"\'; int c = 1\'000;\n' + include("app/B.h") + "// */\n"},
                    "text/A.cpp:3: text includes app/B.h")

    def test_every_source_begins_with_its_licence(self):
        for path in ("text/A.h", "text/A.cpp", "text/A.inc", "text/make.py", "text/CMakeLists.txt"):
            with self.subTest(path=path), tempfile.TemporaryDirectory() as folder:
                pathlib.Path(folder, "text").mkdir()
                pathlib.Path(folder, "text/Good.cpp").write_text(LICENCE + "#include <string>\n")
                pathlib.Path(folder, path).write_text("\n" + LICENCE)
                house = house_includes.House(pathlib.Path(folder))
                self.assertEqual([f"{path}:1: the first line does not say {house_includes.LICENCE}"],
                                 house.check())

    def test_a_script_says_its_licence_behind_its_interpreter(self):
        with tempfile.TemporaryDirectory() as folder:
            pathlib.Path(folder, "make.py").write_text("#!/usr/bin/env python3\n# "
                                                       + house_includes.LICENCE + "\n")
            self.assertEqual([], house_includes.House(pathlib.Path(folder)).check())

    def test_a_folder_without_sources_is_no_success(self):
        self.assertEqual(2, run_over({})[0])
        self.assertEqual(2, run_over({"text/A.txt": ""})[0])


if __name__ == "__main__":
    unittest.main()
