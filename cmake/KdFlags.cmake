# The compile and link settings that every target of ours shares, on one interface target.
add_library(kd_flags INTERFACE)

target_compile_definitions(kd_flags INTERFACE
  QT_NO_CAST_FROM_ASCII
  QT_NO_CAST_TO_ASCII
  QT_NO_URL_CAST_FROM_STRING
  QT_NO_KEYWORDS
  QT_NO_FOREACH
  QT_DEPRECATED_WARNINGS
  QT_STRICT_ITERATORS
  $<$<CONFIG:Debug>:QT_FORCE_ASSERTS>)

if(MSVC)
  target_compile_options(kd_flags INTERFACE /W4 /permissive- /utf-8
    $<$<BOOL:${KDRECORD_WARNINGS_AS_ERRORS}>:/WX>)
else()
  target_compile_options(kd_flags INTERFACE -Wall -Wextra -Wshadow -Wconversion
    $<$<BOOL:${KDRECORD_WARNINGS_AS_ERRORS}>:-Werror>)
endif()

if(UNIX AND NOT APPLE)
  # LINKER:--no-undefined does not go together with the sanitizers' run-time symbols under clang.
  if(NOT (KDRECORD_SANITIZE AND CMAKE_CXX_COMPILER_ID MATCHES Clang))
    target_link_options(kd_flags INTERFACE LINKER:--no-undefined)
  endif()
  target_link_options(kd_flags INTERFACE LINKER:--fatal-warnings)
endif()

if(KDRECORD_SANITIZE STREQUAL "address")
  target_compile_options(kd_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined
    -fno-omit-frame-pointer)
  target_link_options(kd_flags INTERFACE -fsanitize=address,undefined)
elseif(KDRECORD_SANITIZE STREQUAL "thread")
  target_compile_options(kd_flags INTERFACE -fsanitize=thread -fno-omit-frame-pointer)
  target_link_options(kd_flags INTERFACE -fsanitize=thread)
elseif(KDRECORD_SANITIZE)
  message(FATAL_ERROR "KDRECORD_SANITIZE is '${KDRECORD_SANITIZE}'; it takes nothing, address or thread")
endif()

if(KDRECORD_COVERAGE)
  target_compile_options(kd_flags INTERFACE --coverage)
  target_link_options(kd_flags INTERFACE --coverage)
endif()
