# Translations: each .ts file of translations/ is compiled, and all of them become one source file that holds them as
# resources under :/translations. scripts/update-translations gathers the texts.

# The compiler of translations is looked for beside Qt's other tools: the package with Qt's own CMake functions for
# it would bring the Designer and the Assistant along.
find_program(CLIPWAVE_LRELEASE NAMES lrelease lrelease-qt6 HINTS "${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS}"
  "${QT6_INSTALL_PREFIX}/lib/qt6/bin" REQUIRED)

# clipwave_translations(VARIABLE) sets VARIABLE to the source file.
function(clipwave_translations variable)
  set(folder "${CMAKE_CURRENT_BINARY_DIR}/translations")
  file(GLOB texts CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/translations/*.ts")
  set(list "<RCC>\n <qresource prefix=\"/translations\">\n")
  foreach(text IN LISTS texts)
    get_filename_component(name "${text}" NAME_WE)
    add_custom_command(OUTPUT "${folder}/${name}.qm"
      COMMAND "${CMAKE_COMMAND}" -E make_directory "${folder}"
      COMMAND "${CLIPWAVE_LRELEASE}" -silent -nounfinished "${text}" -qm "${folder}/${name}.qm" DEPENDS "${text}" VERBATIM)
    list(APPEND compiled "${folder}/${name}.qm")
    string(APPEND list "  <file>${name}.qm</file>\n")
  endforeach()
  file(CONFIGURE OUTPUT "${folder}/translations.qrc" CONTENT "${list} </qresource>\n</RCC>\n")
  add_custom_command(OUTPUT "${folder}/qrc_translations.cpp"
    COMMAND Qt6::rcc -name translations -o "${folder}/qrc_translations.cpp" "${folder}/translations.qrc"
    DEPENDS ${compiled} "${folder}/translations.qrc" VERBATIM)
  set_source_files_properties("${folder}/qrc_translations.cpp" PROPERTIES SKIP_AUTOGEN ON)
  set(${variable} "${folder}/qrc_translations.cpp" PARENT_SCOPE)
endfunction()
