dunkman_benchmark(start_bench
    SOURCES start_bench.cpp
    LINKS app simulated_machine)
