# What a library shows to its users.

# ond_export_only(target file)
# The file names classes and functions, one a line, as "Class", "space::Class" or "function": these are exported, with
# their members, tables and type information, and nothing else. Marks in the headers would not do by themselves: the
# standard library and Qt make their templates visible, and with them what we instantiate. Statics of inline functions
# stay inside, too, since their symbols would be unique in the whole process.
function(ond_export_only target file)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${file}")
  file(STRINGS "${file}" names)
  set(patterns "")
  foreach(name IN LISTS names)
    string(REPLACE "::" ";" parts "${name}")
    set(mangled "")
    foreach(part IN LISTS parts)
      string(LENGTH "${part}" length)
      string(APPEND mangled "${length}${part}")
    endforeach()
    # Itanium C++ ABI, 5.1: functions, members, type information and its name, tables, thunks.
    foreach(start IN ITEMS _Z _ZN _ZNK _ZTI _ZTIN _ZTS _ZTSN _ZTV _ZTVN _ZThn*_N _ZThn*_NK)
      if(APPLE)
        string(APPEND patterns "_${start}${mangled}*\n")
      else()
        string(APPEND patterns "${start}${mangled}*;\n")
      endif()
    endforeach()
  endforeach()

  set(list "${CMAKE_CURRENT_BINARY_DIR}/${target}.exports")
  if(APPLE)
    file(CONFIGURE OUTPUT "${list}" CONTENT "${patterns}" @ONLY)
    target_link_options(${target} PRIVATE "LINKER:-exported_symbols_list,${list}")
  else()
    file(CONFIGURE OUTPUT "${list}" CONTENT "{ global:\n${patterns}local: *; };\n" @ONLY)
    target_link_options(${target} PRIVATE "LINKER:--version-script,${list}")
  endif()
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${list}")
endfunction()
