# The Debian package: `cpack -G DEB` in a configured build directory gives
# tallyvane_<version>_<arch>.deb with the layout of `cmake --install`.

set(CPACK_GENERATOR "DEB")
set(CPACK_PACKAGE_NAME "tallyvane")
set(CPACK_PACKAGE_VENDOR "Quorvex")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Finance calculator for personal and business money questions")
# Debian wants the long description wrapped; CPack keeps the line breaks.
string(JOIN "\n" CPACK_PACKAGE_DESCRIPTION
    "Form calculators for time value of money, return on investment,"
    "compound interest, NPV and IRR, tips, bonds and stocks compute as you"
    "type and write plain-text reports to save or send by e-mail. A keypad"
    "business calculator adds TVM registers, cash flows, memory registers"
    "and a history. tallyvane-cli runs the same calculators from the"
    "command line.")
set(CPACK_PACKAGE_CONTACT "Quorvex <${TALLYVANE_SUPPORT_EMAIL}>")
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION "utils")
set(CPACK_DEBIAN_PACKAGE_PRIORITY "optional")
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${TALLYVANE_WEB_URL})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# dpkg-shlibdeps turns the linked libraries into Depends (libqt6gui6 also
# brings the xcb and offscreen platform plugins). It cannot see what Qt
# loads at run time: the QML modules behind the screens' imports (QtQuick
# imports QtQml; Controls with the Basic style sits on Templates) and the
# SVG image plugin that draws the icons, and the SQLite driver of the
# saved-reports database.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(runtime_packages
    libqt6sql6-sqlite
    libqt6svg6
    qml6-module-qtqml
    qml6-module-qtqml-models
    qml6-module-qtqml-workerscript
    qml6-module-qtquick
    qml6-module-qtquick-controls
    qml6-module-qtquick-layouts
    qml6-module-qtquick-templates
)
list(JOIN runtime_packages ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
# Opens web pages and mail drafts in the desktop's programs.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils")

include(CPack)
