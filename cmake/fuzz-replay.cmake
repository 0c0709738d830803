# Runs one fuzz target once on every file of a folder of real files and of its
# extra/ folder: what the readers meet in real use must never stop a target.
#   cmake -DTARGET=<fuzz binary> -DCORPUS=<folder> -DARTIFACTS=<prefix> -P fuzz-replay.cmake
# Without the folder nothing runs and the test is skipped (ctest matches the
# first line printed).
cmake_minimum_required(VERSION 3.20)
if(NOT IS_DIRECTORY "${CORPUS}")
  message("fuzz replay: Skipped\nno corpus folder ${CORPUS} (the VV_CORPUS_DIR cache variable): replay skipped")
  return()
endif()
file(GLOB files LIST_DIRECTORIES false "${CORPUS}/*" "${CORPUS}/extra/*")
list(FILTER files EXCLUDE REGEX "\\.md$")
list(LENGTH files count)
message("fuzz replay: ${count} files of ${CORPUS} and its extra/ folder")
# Given files, libFuzzer runs each once and stops at the first that fails.
execute_process(COMMAND "${TARGET}" -timeout=10 -rss_limit_mb=2048 "-artifact_prefix=${ARTIFACTS}" ${files}
                RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "fuzz replay: ${TARGET} stopped on a file of ${CORPUS} (exit ${result})")
endif()
