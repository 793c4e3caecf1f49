# kd_add_translations(NAME OUTVAR file.ts ...)
# Puts into OUTVAR a source file NAME that holds the translations as resources ":/translations/<file>.qm". A build
# only reads the .ts files; the target update_translations writes into them what the sources say now.
function(kd_add_translations name outvar)
  qt5_add_translation(compiled ${ARGN} OPTIONS -silent)
  set(entries)
  foreach(file ${compiled})
    get_filename_component(alias ${file} NAME)
    string(APPEND entries "<file alias=\"${alias}\">${file}</file>")
  endforeach()
  set(collection ${CMAKE_CURRENT_BINARY_DIR}/${name}.qrc)
  file(CONFIGURE OUTPUT ${collection}
    CONTENT "<RCC><qresource prefix=\"/translations\">@entries@</qresource></RCC>\n" @ONLY)
  qt5_add_resources(resources ${collection})
  set_source_files_properties(${resources} PROPERTIES SKIP_AUTOGEN ON)
  set(${outvar} ${resources} PARENT_SCOPE)

  add_custom_target(update_translations
    COMMAND Qt5::lupdate -locations none -no-obsolete Src Host -ts ${ARGN}
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} VERBATIM)
endfunction()
