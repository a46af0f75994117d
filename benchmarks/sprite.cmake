dunkman_benchmark(sprite_bench SOURCES ${CMAKE_CURRENT_LIST_DIR}/sprite_bench.cpp LINKS render simulated_machine)
