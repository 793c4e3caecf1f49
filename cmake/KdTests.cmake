find_package(Qt5 5.15 REQUIRED COMPONENTS Test)

# kd_unwind_slowly(tst_Name): GLib keeps no frame pointers: its callers show only to the slow unwinder. That makes every
# allocation of a window several times slower, so that tests without GStreamer do without.
function(kd_unwind_slowly name)
  set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT
    ASAN_OPTIONS=detect_leaks=1:fast_unwind_on_malloc=0:malloc_context_size=16)
endfunction()

# kd_add_test(tst_Name [SOURCES ...] [LINKS ...] LABEL unit|gui|engine|e2e [MOUNTS] [TIMEOUT seconds])
# One executable and one CTest entry from tst_Name.cpp. gui tests need a display; engine and e2e tests run in a
# private session of their own with a display, a message bus, a sound server and no device but the test's. MOUNTS adds
# the right to mount small disks.
function(kd_add_test name)
  cmake_parse_arguments(ARG "MOUNTS" "LABEL;TIMEOUT" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${name}.cpp ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} KdTestSupport kd_flags)
  set(launcher)
  if(ARG_LABEL STREQUAL "gui")
    set(launcher ${PROJECT_SOURCE_DIR}/tools/virtual-session --display --)
  elseif(ARG_LABEL STREQUAL "engine" OR ARG_LABEL STREQUAL "e2e")
    set(launcher ${PROJECT_SOURCE_DIR}/tools/virtual-session --display --sound $<$<BOOL:${ARG_MOUNTS}>:--mounts> --)
  endif()
  add_test(NAME ${name} COMMAND ${launcher} $<TARGET_FILE:${name}> COMMAND_EXPAND_LISTS)
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  if(KDRECORD_SANITIZE)
    # The sanitizers make everything several times slower, the leak check at the end most of all.
    math(EXPR ARG_TIMEOUT "4 * ${ARG_TIMEOUT}")
  endif()
  set_tests_properties(${name} PROPERTIES LABELS ${ARG_LABEL} TIMEOUT ${ARG_TIMEOUT}
    ENVIRONMENT "${KDRECORD_TEST_ENVIRONMENT}")
  if(KDRECORD_SANITIZE STREQUAL "address" AND "${ARG_LABEL} ${ARG_LINKS}" MATCHES "engine|e2e|KdVBLModel|GSTREAMER|Studio")
    kd_unwind_slowly(${name})
  endif()
  if(ARG_LABEL STREQUAL "unit")
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT QT_QPA_PLATFORM=offscreen)
  endif()
endfunction()

# Qt 5 turns file names into the locale's encoding: the tests must not depend on the developer's.
set(KDRECORD_TEST_ENVIRONMENT LC_ALL=C.UTF-8)
if(KDRECORD_SANITIZE)
  # No test draws with OpenGL, whose drivers leak and race at start-up.
  list(APPEND KDRECORD_TEST_ENVIRONMENT QT_XCB_GL_INTEGRATION=none)
endif()
if(KDRECORD_SANITIZE STREQUAL "address")
  list(APPEND KDRECORD_TEST_ENVIRONMENT
    "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/Tests/lsan.supp:print_suppressions=0"
    "UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1")
elseif(KDRECORD_SANITIZE STREQUAL "thread")
  # Races only: the search for lock cycles sees what the distribution's libraries lock, not all that they unlock, and
  # ends the program at the 64th lock that a thread seems to hold.
  list(APPEND KDRECORD_TEST_ENVIRONMENT
    "TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/Tests/tsan.supp:ignore_noninstrumented_modules=1:halt_on_error=0:detect_deadlocks=0"
    # GLib's own allocator hands memory from thread to thread unseen, malloc() does not.
    G_SLICE=always-malloc)
endif()
