dunkman_benchmark(world_bench
    SOURCES world_bench.cpp
    LINKS app simulated_machine)
