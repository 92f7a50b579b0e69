# The languages that there are files of, as one list to include: a new language is a new file.
file(GLOB languages CONFIGURE_DEPENDS RELATIVE ${CMAKE_SOURCE_DIR}
  ${CMAKE_SOURCE_DIR}/resources/languages/*.inc)
set(list "")
foreach(language ${languages})
  string(APPEND list "#include \"${language}\"\n")
endforeach()
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/generated/resources/languages.inc CONTENT "${list}")
target_include_directories(orvello_resources PUBLIC ${CMAKE_BINARY_DIR}/generated)
