# Makes TEXT, seen from the folder BASE, into the PDF DOCUMENT. A picture that is missing, or a link that leads nowhere,
# is an error; weasyprint only mentions it.
set(ENV{SOURCE_DATE_EPOCH} 0)  # the same text gives the same document, whenever it is made
execute_process(COMMAND "${WEASYPRINT}" --pdf-variant pdf/ua-1 --base-url "${BASE}" "${TEXT}" "${DOCUMENT}"
  RESULT_VARIABLE result ERROR_VARIABLE said)
if(result OR said MATCHES "ERROR")
  file(REMOVE "${DOCUMENT}")
  message(FATAL_ERROR "The help document could not be made:\n${said}")
endif()
