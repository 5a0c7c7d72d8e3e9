# cmake -D LUPDATE=program -D SOURCE_DIR=tree -D WORK_DIR=folder -P CheckTranslations.cmake
# Fails when a text of the sources lacks a finished translation.

file(REMOVE_RECURSE "${WORK_DIR}")
file(COPY "${SOURCE_DIR}/account/ui/res/language/" DESTINATION "${WORK_DIR}")
file(GLOB copies "${WORK_DIR}/*.ts")
execute_process(COMMAND "${LUPDATE}" -silent -I "${SOURCE_DIR}" "${SOURCE_DIR}/account/ui" -ts ${copies}
  COMMAND_ERROR_IS_FATAL ANY)
foreach(copy IN LISTS copies)
  file(READ "${copy}" content)
  string(REGEX MATCHALL "<source>[^<]*</source>[ \n]*<translation (type=\"unfinished\"|type=\"vanished\")" open "${content}")
  if(open OR NOT content MATCHES "<translation>")
    list(APPEND incomplete "${copy}:\n${open}")
  endif()
endforeach()
if(incomplete OR NOT copies)
  message(FATAL_ERROR "untranslated or no longer used: ${incomplete}")
endif()
