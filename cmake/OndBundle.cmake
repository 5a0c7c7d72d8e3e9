# The assembled bundle. Executables and libraries are built right into it; this file adds Info.plist and the resources.

set(OND_BUNDLE_NAME "PDF Orvell" CACHE STRING "Name of the assembled bundle, without .app")
set(OND_BUNDLE_IDENTIFIER "com.pdforvell.reader" CACHE STRING "CFBundleIdentifier of the assembled bundle")
set(OND_BUNDLE_DIR "${PROJECT_BINARY_DIR}/${OND_BUNDLE_NAME}.app")
set(OND_BUNDLE_RESOURCE_FOLDERS cfgdata data ressrc/chs)

# ond_companion(name source...)
# An executable of the product: built into the bundle, and found there by its relative path to the libraries.
function(ond_companion name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE ondpdftoolutils ond_build_options)
  if(APPLE)
    set(libraries "@executable_path/../Frameworks")
  else()
    set(libraries "$ORIGIN/../Frameworks")
  endif()
  set_target_properties(${name} PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY "${OND_BUNDLE_DIR}/Contents/MacOS"
    BUILD_WITH_INSTALL_RPATH ON
    INSTALL_RPATH "${libraries}")
  add_dependencies(bundle ${name})
endfunction()

# ond_libraries_lie_together(target)
# The library finds the others of the product in its own folder, in the bundle as where it is installed.
function(ond_libraries_lie_together target)
  if(APPLE)
    set(here "@loader_path")
  else()
    set(here "$ORIGIN")
  endif()
  set_target_properties(${target} PROPERTIES BUILD_WITH_INSTALL_RPATH ON INSTALL_RPATH "${here}")
endfunction()

# ond_bundle_files(name folder file...)
# Copies files into a folder of the bundle's Contents, symbolic links as such.
function(ond_bundle_files name folder)
  set(target_dir "${OND_BUNDLE_DIR}/Contents/${folder}")
  file(MAKE_DIRECTORY "${target_dir}")
  add_custom_target(${name}
    COMMAND cp -RP ${ARGN} "${target_dir}"
    COMMENT "Copying ${name}"
    VERBATIM)
  add_dependencies(bundle ${name})
endfunction()

function(ond_assemble_bundle)
  configure_file("${OND_PRODUCT_DIR}/Info.plist.in" "${OND_BUNDLE_DIR}/Contents/Info.plist" @ONLY)

  set(resources "${OND_BUNDLE_DIR}/Contents/Resources")
  foreach(folder IN LISTS OND_BUNDLE_RESOURCE_FOLDERS)
    file(MAKE_DIRECTORY "${resources}/${folder}")
  endforeach()

  set(source_dir "${OND_PRODUCT_DIR}/resources")
  file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE "${source_dir}" "${source_dir}/*")
  set(copies "")
  foreach(file IN LISTS files)
    add_custom_command(
      OUTPUT "${resources}/${file}"
      COMMAND "${CMAKE_COMMAND}" -E copy "${source_dir}/${file}" "${resources}/${file}"
      DEPENDS "${source_dir}/${file}"
      COMMENT "Copying ${file} into the bundle"
      VERBATIM)
    list(APPEND copies "${resources}/${file}")
  endforeach()
  add_custom_target(bundle ALL DEPENDS ${copies})
endfunction()

ond_assemble_bundle()
