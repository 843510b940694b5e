# Included from benchmarks/CMakeLists.txt: the defaults store on its own.
add_executable(defaults_store_benchmarks ${CMAKE_CURRENT_LIST_DIR}/defaults_store_benchmarks.cpp)
target_link_libraries(defaults_store_benchmarks PRIVATE store_defaults benchmark::benchmark)
zelvaine_warnings(defaults_store_benchmarks)
