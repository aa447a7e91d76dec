# Calculators: each lives in src/functions/<folder>/ and is added to the build
# by one line, tallyvane_add_calculator(<folder> <Prefix>), in src/CMakeLists.txt.
# Its folder holds <Prefix>Description.cpp (defining the function
# `<prefix>Description()` that returns its CalculatorDescription), its model,
# its controller (<Prefix>Controller, the class QML knows it by), and any
# QML of its own. Nothing else names it: tallyvane_finish_calculators()
# generates the registry's list, in the order of those lines, and the QML
# types of the controllers, and builds tallyvane_functions over them all.

# tallyvane_add_calculator(<folder> <Prefix>)
# The folder's *.html pages (its description page) are served as
# qrc:/html/<page>.html.
# A header named *QmlTypes.h in the folder declares further QML types of its
# own (QML_FOREIGN); the QML module picks it up.
function(tallyvane_add_calculator folder prefix)
    set(dir ${CMAKE_CURRENT_SOURCE_DIR}/functions/${folder})
    file(GLOB sources CONFIGURE_DEPENDS ${dir}/*.cpp ${dir}/*.h)
    file(GLOB qml_types CONFIGURE_DEPENDS ${dir}/*QmlTypes.h)
    list(REMOVE_ITEM sources ${qml_types})
    file(GLOB qml CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} ${dir}/*.qml)
    set(target tallyvane_fn_${folder})
    add_library(${target} STATIC ${sources})
    target_link_libraries(${target} PUBLIC tallyvane_core)
    file(GLOB pages CONFIGURE_DEPENDS ${dir}/*.html)
    if(pages)
        qt_add_resources(${target} "${folder}_html" PREFIX "/html" BASE ${dir} FILES ${pages})
    endif()
    # Lets the QML module type this calculator's controller.
    qt_extract_metatypes(${target})
    set_property(GLOBAL APPEND PROPERTY TALLYVANE_CALCULATORS "${folder}|${prefix}")
    set_property(GLOBAL APPEND PROPERTY TALLYVANE_CALCULATOR_QML ${qml})
    set_property(GLOBAL APPEND PROPERTY TALLYVANE_CALCULATOR_QML_TYPES ${qml_types})
endfunction()

# Builds tallyvane_functions: every calculator added, and the generated
# registry list (CalculatorList.cpp: installCalculators()) and QML types
# (CalculatorQmlTypes.h).
function(tallyvane_finish_calculators)
    get_property(calculators GLOBAL PROPERTY TALLYVANE_CALCULATORS)
    set(declarations "")
    set(entries "")
    set(includes "")
    set(foreign "")
    set(libraries "")
    foreach(entry ${calculators})
        string(REPLACE "|" ";" parts "${entry}")
        list(GET parts 0 folder)
        list(GET parts 1 prefix)
        string(SUBSTRING ${prefix} 0 1 first)
        string(TOLOWER ${first} first)
        string(SUBSTRING ${prefix} 1 -1 rest)
        string(APPEND declarations "const CalculatorDescription& ${first}${rest}Description();\n")
        string(APPEND entries "        &${first}${rest}Description(),\n")
        string(APPEND includes "#include \"functions/${folder}/${prefix}Controller.h\"\n")
        string(APPEND foreign "struct ${prefix}ControllerForeign {\n    Q_GADGET\n"
            "    QML_FOREIGN(${prefix}Controller)\n    QML_NAMED_ELEMENT(${prefix}Controller)\n};\n\n")
        list(APPEND libraries tallyvane_fn_${folder})
    endforeach()
    set(generated ${CMAKE_CURRENT_BINARY_DIR}/calculators)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/CalculatorList.cpp.in
        ${generated}/CalculatorList.cpp @ONLY)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/CalculatorQmlTypes.h.in
        ${generated}/CalculatorQmlTypes.h @ONLY)
    add_library(tallyvane_functions STATIC ${generated}/CalculatorList.cpp
        functions/Calculators.h)
    target_include_directories(tallyvane_functions PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(tallyvane_functions PUBLIC ${libraries})
endfunction()
