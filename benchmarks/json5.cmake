dunkman_benchmark(json5_bench
    SOURCES json5_bench.cpp
    LINKS json5)
