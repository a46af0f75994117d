"""Who may change the process-wide values. Everybody else reads them through a const reference, or does not see them."""

import re

AROUND = ["tests/", "benchmarks/"]  # they play every part

# The header that gives write access, and who includes it.
WRITERS = {
    "base/frame_state_writer.h": ["base/frame_state.cpp", "app/main_loop.cpp", "app/lifecycle.cpp", "app/recording.cpp",
                                  "app/reset.cpp"],
    "base/key_states_writer.h": ["base/key_states.cpp", "app/frame.cpp", "app/recording.cpp", "app/reset.cpp",
                                 "screens/game_screen.cpp"],
    "render/binding_state_writer.h": ["render/binding_state.cpp", "render/discard.cpp", "render/material.cpp",
                                      "render/program.cpp", "render/renderer.cpp", "render/scissor.cpp",
                                      "tools/frames/main.cpp"],
    "render/image_table_writer.h": ["render/image_table.cpp", "render/renderer.cpp", "assets/catalog.cpp",
                                    "tools/reference/class_defaults.cpp"],
    "render/renderer_objects.h": ["render/clear.cpp", "render/draw.cpp", "render/nearest_first.cpp",
                                  "render/renderer.cpp", "render/sprite.cpp", "render/texture.cpp",
                                  "render/view.cpp", "render/warm_up.cpp", "tools/frames/main.cpp"],
    "audio/music_writer.h": ["audio/music.cpp", "audio/sound.cpp"],
    "audio/fed_ring.h": ["audio/sound.cpp", "audio/sound_win32.cpp", "platform/simulated/audio_sim.cpp",
                         "platform/film/audio_film.cpp", "tools/sound/player_win32.cpp"],
    "assets/catalog_writer.h": ["assets/catalog.cpp", "app/lifecycle.cpp", "app/reset.cpp",
                                "tools/inspect/commands.cpp"],
    "screens/screen_writer.h": ["screens/screen.cpp", "screens/credits_screen.cpp"],
    "app/recording_writer.h": ["app/recording.cpp", "app/reset.cpp", "app/unfinished_recording.cpp"],
    "world/world.h": ["world/", "screens/game_screen.cpp", "app/reset.cpp", "tools/headless/trace.cpp",
                      "tools/inspect/", "workshop/playthrough/"],
}

# What puts one owner's values back. Programs call resetProgram of app/reset.h instead; the tests of a single folder
# that stands below app/ start from the reset of that folder.
RESETS = {
    "destroyScreens": ["screens/screen", "app/reset.cpp", "tests/screens/"],
    "resetWorld": ["world/world", "app/reset.cpp", "tests/world/world_test.cpp"],
    "resetRandom": ["world/random", "world/world.cpp", "tests/world/random_test.cpp"],
    "resetAudio": ["audio/sound", "app/reset.cpp", "tests/audio/", "tests/platform/film_test.cpp",
                   "benchmarks/audio_bench.cpp"],
    "resetRenderer": ["render/renderer", "app/reset.cpp", "tests/fakes/recording_gl.cpp", "tests/render/",
                      "tests/platform/shown_sprite_test.cpp", "tests/platform/unpacked_pictures_test.cpp"],
    "resetGlFunctions": ["render/gl", "render/renderer.cpp", "tests/render/gl_loader_test.cpp"],
    "resetMainLoop": ["app/main_loop", "app/reset.cpp"],
    "resetMachine": ["platform/", "app/reset.cpp", "tests/platform/film_test.cpp", "tests/windows/ten_shows_win32.cpp",
                     "tests/platform/shown_sprite_test.cpp", "tests/platform/unpacked_pictures_test.cpp"],
}

# One caller, so that no other repeats its many arguments.
ONE_CALLER = {"drawSprite": ["render/sprite.h", "render/sprite.cpp", "tests/render/sprite_test.cpp"]}


def may(path, allowed):
    return any(path.startswith(place) for place in allowed)


def writer_faults(path, text, included):
    for header in included:
        if header in WRITERS and not may(path, WRITERS[header] + AROUND):
            yield f"{path}: {header} is for those who write; tests/repository/writers.py lists them"
    if re.search(r"\bnamespace (dunkman::)?writable\b", text) and not path.endswith("_writer.h"):
        yield f"{path}: write access is declared in a header of its own, whose name ends in _writer.h"
    code = re.sub(r"//[^\n]*", "", text)
    for function, allowed in [*RESETS.items(), *ONE_CALLER.items()]:
        if re.search(rf"\b{function}\(", code) and not may(path, allowed):
            yield f"{path}: {function} is not called from here; tests/repository/writers.py says from where"
