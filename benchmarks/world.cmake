dunkman_benchmark(world_bench
    SOURCES world_bench.cpp
    LINKS world simulated_machine)
