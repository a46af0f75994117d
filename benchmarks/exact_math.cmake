dunkman_benchmark(exact_math_bench SOURCES exact_math_bench.cpp LINKS exact)
