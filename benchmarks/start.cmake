dunkman_benchmark(start_bench
    SOURCES start_bench.cpp
    LINKS app platform_rules simulated_machine)
