# Runs on what was installed for the package, before it is packed: what Debian wants otherwise than other systems.
set(root "${CPACK_TEMPORARY_DIRECTORY}/usr")
set(doc "${root}/share/doc/clipwave")
get_filename_component(here "${CMAKE_CURRENT_LIST_DIR}" ABSOLUTE)

# The licence is on every Debian. The project is its own packager, so the package's changes are called changelog alone.
file(REMOVE "${doc}/LICENSE")
configure_file("${here}/changelog" "${doc}/changelog" COPYONLY)
configure_file("${here}/lintian-overrides" "${root}/share/lintian/overrides/clipwave" COPYONLY)

file(GLOB programs "${root}/bin/*")
execute_process(COMMAND strip --remove-section=.comment --remove-section=.note ${programs} COMMAND_ERROR_IS_FATAL ANY)

# Without name and time in the compressed file, which would differ each time.
file(GLOB_RECURSE pages "${root}/share/man/*.[1-8]")
foreach(text IN LISTS pages ITEMS "${doc}/changelog")
  execute_process(COMMAND gzip -9n "${text}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()

# Everybody may read it, whatever the umask; and nothing is younger than the source, so that the same tree gives the same bytes.
execute_process(COMMAND chmod -R u=rwX,go=rX "${CPACK_TEMPORARY_DIRECTORY}" COMMAND_ERROR_IS_FATAL ANY)
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  execute_process(COMMAND find "${CPACK_TEMPORARY_DIRECTORY}" -newermt "@$ENV{SOURCE_DATE_EPOCH}"
    -exec touch --no-dereference "--date=@$ENV{SOURCE_DATE_EPOCH}" {} + COMMAND_ERROR_IS_FATAL ANY)
endif()
