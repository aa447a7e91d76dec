#!/usr/bin/env python3
"""The layers of src/ as README draws them, checked on every #include.

Each folder may include only the folders below it (and itself); nothing
below the screens includes Qt Quick or QML, and nothing below `gui`
includes QtGui. A calculator's type registration header (*QmlTypes.h),
compiled only into the QML module, may include QtQml. Prints each include that breaks a rule and exits 1 if any
does.

    check_layers.py SRC_DIR
"""
import re
import sys
from pathlib import Path

# Folder -> the folders it may include, bottom up.
ALLOWED = {
    "numerics": set(),
    "platform": {"numerics"},
    "expression": {"numerics"},
    "charts": {"platform", "numerics"},
    "store": {"platform", "numerics"},
    "framework": {"store", "charts", "platform", "numerics"},
    "calculator": {"framework", "store", "expression", "charts", "platform", "numerics"},
    "functions": {"framework", "store", "charts", "platform", "numerics"},
    "reports": {"framework", "store", "platform", "numerics"},
    "gui": {"reports", "framework", "store", "charts", "platform", "numerics"},
    "cli": {"functions", "calculator", "reports", "framework", "store", "expression", "charts",
            "platform", "numerics"},
    "app": {"cli", "gui", "functions", "calculator", "reports", "framework", "store",
            "expression", "charts", "platform", "numerics"},
}
# Qt modules a folder may include beyond QtCore (and QtSql for the store).
QT_GUI = {"gui", "app"}
QT_QUICK = {"app"}
# Single files of a lower folder that are the screens' own pieces: the
# chart's Qt Quick item.
QUICK_FILES = {"charts/MultiLineGraphView.h", "charts/MultiLineGraphView.cpp",
               "charts/MultiLineGraphRenderer.h", "charts/MultiLineGraphRenderer.cpp",
               "charts/ScatterChart.h", "charts/ScatterChart.cpp"}

INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]', re.M)


def main():
    src = Path(sys.argv[1] if len(sys.argv) > 1 else "src")
    problems = []
    for path in sorted(src.rglob("*")):
        if path.suffix not in {".h", ".cpp"}:
            continue
        rel = path.relative_to(src).as_posix()
        folder = rel.split("/")[0]
        if folder not in ALLOWED:
            problems.append(f"{rel}: folder {folder} has no place in the layers")
            continue
        for included in INCLUDE.findall(path.read_text(encoding="utf-8")):
            top = included.split("/")[0]
            if top in ALLOWED and top != folder and top not in ALLOWED[folder]:
                problems.append(f"{rel}: {folder} may not include {included}")
            module = re.match(r"(?:Qt(\w+)/)?(Q\w+)", included)
            if included.startswith(("QtQuick", "QtQml", "QQml", "QQuick")) and \
                    folder not in QT_QUICK and rel not in QUICK_FILES and \
                    not rel.endswith("QmlTypes.h"):
                problems.append(f"{rel}: {folder} may not include Qt Quick or QML ({included})")
            if included.startswith(("QtGui", "QImage", "QPainter", "QColor", "QGuiApplication",
                                    "QFont", "QPdfWriter", "QTextDocument")) and \
                    folder not in QT_GUI and rel not in QUICK_FILES and \
                    not rel.startswith("charts/MultiLineGraph"):
                problems.append(f"{rel}: {folder} may not include QtGui ({included})")
    for problem in problems:
        print(problem)
    print(f"layers: {len(problems)} problem(s)")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
