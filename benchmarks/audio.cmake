dunkman_benchmark(audio_bench
    SOURCES audio_bench.cpp
    LINKS audio simulated_machine)
