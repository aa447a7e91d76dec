# Installs the build into a fresh prefix and checks the layout a desktop
# relies on: both programs in bin, the desktop entry pointing at them and at
# the icon that is installed, and the metainfo naming the desktop entry.
# The installed command line must run from there.
#   cmake -DBUILD_DIR=<build> -DPREFIX=<dir, emptied first> -P InstallLayout.cmake

cmake_minimum_required(VERSION 3.25)

foreach(var BUILD_DIR PREFIX)
    if(NOT DEFINED ${var})
        message(FATAL_ERROR "${var} is not set")
    endif()
endforeach()

set(app_id com.quorvex.Tallyvane)
file(REMOVE_RECURSE ${PREFIX})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${PREFIX}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "cmake --install failed (${result}):\n${output}")
endif()

set(failures "")

foreach(program tallyvane tallyvane-cli)
    if(NOT EXISTS ${PREFIX}/bin/${program} OR IS_DIRECTORY ${PREFIX}/bin/${program})
        string(APPEND failures "  bin/${program} is not installed\n")
    endif()
endforeach()

set(icon_file ${PREFIX}/share/icons/hicolor/scalable/apps/${app_id}.svg)
if(NOT EXISTS ${icon_file})
    string(APPEND failures "  the scalable icon ${app_id}.svg is not installed\n")
endif()

set(desktop_file ${PREFIX}/share/applications/${app_id}.desktop)
if(EXISTS ${desktop_file})
    file(STRINGS ${desktop_file} desktop_lines)
    foreach(line "Type=Application" "Exec=tallyvane" "Icon=${app_id}")
        if(NOT line IN_LIST desktop_lines)
            string(APPEND failures "  the desktop entry lacks the line ${line}\n")
        endif()
    endforeach()
    find_program(desktop_file_validate desktop-file-validate)
    if(desktop_file_validate)
        execute_process(COMMAND ${desktop_file_validate} ${desktop_file}
            RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
        if(NOT result EQUAL 0 OR NOT output STREQUAL "")
            string(APPEND failures "  desktop-file-validate finds fault with the desktop entry:\n${output}\n")
        endif()
    else()
        message(STATUS "desktop-file-validate not found (scripts/setup installs it); entry not validated")
    endif()
else()
    string(APPEND failures "  the desktop entry ${app_id}.desktop is not installed\n")
endif()

set(metainfo_file ${PREFIX}/share/metainfo/${app_id}.metainfo.xml)
if(EXISTS ${metainfo_file})
    file(READ ${metainfo_file} metainfo)
    string(FIND "${metainfo}" "<id>${app_id}</id>" id_at)
    string(FIND "${metainfo}" "<launchable type=\"desktop-id\">${app_id}.desktop</launchable>" launchable_at)
    if(id_at EQUAL -1 OR launchable_at EQUAL -1)
        string(APPEND failures "  the metainfo does not name ${app_id} and launch ${app_id}.desktop\n")
    endif()
else()
    string(APPEND failures "  the metainfo ${app_id}.metainfo.xml is not installed\n")
endif()

# The installed command line runs on its own, away from the build tree.
if(EXISTS ${PREFIX}/bin/tallyvane-cli)
    execute_process(COMMAND ${CMAKE_COMMAND} -E env TALLYVANE_HOME=${PREFIX}/home
        ${PREFIX}/bin/tallyvane-cli calc roi investmentAmount=1000 futureValue=1250 years=2
        WORKING_DIRECTORY ${PREFIX}
        RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE error)
    if(NOT result EQUAL 0 OR NOT output MATCHES "(^|\n)roi: 25%\n")
        string(APPEND failures "  the installed tallyvane-cli computes no ROI (exit ${result}):\n${output}${error}\n")
    endif()
endif()

if(failures)
    message(FATAL_ERROR "The installed layout under ${PREFIX} is wrong:\n${failures}")
endif()
