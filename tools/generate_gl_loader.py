#!/usr/bin/env python3
"""Writes render/gl_functions.inc and render/gl_constants.inc from the Khronos OpenGL registry.

    tools/generate_gl_loader.py [--registry gl.xml] [--output render]

The registry is Debian's package khronos-api. The output is committed, so building the game needs neither the
registry nor Python; a test runs this script again and compares. A new entry point or constant is one new name
in the lists below, then one run.
"""

import argparse
import pathlib
import sys
import xml.etree.ElementTree as ElementTree

# In the system's OpenGL library since version 1.1.
SYSTEM_FUNCTIONS = """
glBlendFunc glClear glClearColor glCullFace glDeleteTextures glDepthFunc glDepthMask glDisable glDrawArrays
glDrawElements glEnable glScissor glViewport
""".split()

# Answered by the driver, by name.
DRIVER_FUNCTIONS = """
glCreateShader glShaderSource glCompileShader glGetShaderiv glGetShaderInfoLog glCreateProgram glAttachShader
glLinkProgram glValidateProgram glGetProgramiv glGetProgramInfoLog glDeleteProgram glUseProgram
glGetProgramInterfaceiv glGetProgramResourceiv glGetProgramResourceName glGetUniformiv
glUniform1i glUniform1fv glUniform2fv glUniform3fv glUniform4fv glUniform1uiv glUniformMatrix4fv glBindBufferBase
glCreateTextures glTextureStorage2D glCompressedTextureSubImage2D glGenerateTextureMipmap glBindTextureUnit
glCreateSamplers glSamplerParameteri glBindSampler glDeleteSamplers
glCreateVertexArrays glBindVertexArray glDeleteVertexArrays glEnableVertexArrayAttrib glVertexArrayAttribFormat
glVertexArrayAttribBinding glVertexArrayVertexBuffer glVertexArrayElementBuffer glDrawArraysInstanced
glDrawElementsInstanced
""".split()

CONSTANTS = """
GL_FALSE GL_TRUE GL_ONE GL_SRC_ALPHA GL_ONE_MINUS_SRC_ALPHA
GL_COLOR_BUFFER_BIT GL_DEPTH_BUFFER_BIT GL_DEPTH_TEST GL_CULL_FACE GL_BLEND GL_LESS GL_ALWAYS GL_BACK
GL_RASTERIZER_DISCARD GL_SCISSOR_TEST
GL_TRIANGLE_STRIP GL_TRIANGLES GL_UNSIGNED_BYTE GL_UNSIGNED_SHORT GL_UNSIGNED_INT
GL_INT GL_FLOAT GL_FLOAT_VEC2 GL_FLOAT_VEC3 GL_FLOAT_VEC4 GL_FLOAT_MAT4
GL_VERTEX_SHADER GL_GEOMETRY_SHADER GL_TESS_CONTROL_SHADER GL_TESS_EVALUATION_SHADER GL_FRAGMENT_SHADER
GL_COMPILE_STATUS GL_LINK_STATUS GL_VALIDATE_STATUS
GL_UNIFORM GL_SHADER_STORAGE_BLOCK GL_SHADER_STORAGE_BUFFER GL_ACTIVE_RESOURCES
GL_NAME_LENGTH GL_LOCATION GL_TYPE GL_ARRAY_SIZE GL_BUFFER_BINDING
GL_TEXTURE_2D GL_R8 GL_COMPRESSED_RGBA_S3TC_DXT1_EXT
GL_TEXTURE_WRAP_S GL_TEXTURE_WRAP_T GL_TEXTURE_WRAP_R GL_TEXTURE_MIN_FILTER GL_TEXTURE_MAG_FILTER
GL_CLAMP_TO_EDGE GL_LINEAR GL_LINEAR_MIPMAP_LINEAR
""".split()

# Shapes of the sampler types and of the image types; shadow samplers exist for floating-point texels alone.
SHAPES = """
1D 2D 3D CUBE 2D_RECT 1D_ARRAY 2D_ARRAY CUBE_MAP_ARRAY BUFFER 2D_MULTISAMPLE 2D_MULTISAMPLE_ARRAY
""".split()
SHADOW_SHAPES = """
1D_SHADOW 2D_SHADOW CUBE_SHADOW 2D_RECT_SHADOW 1D_ARRAY_SHADOW 2D_ARRAY_SHADOW CUBE_MAP_ARRAY_SHADOW
""".split()
OPAQUE_TYPES = [f"GL_{texel}{kind}_{shape}" for kind in ("SAMPLER", "IMAGE")
                for texel in ("", "INT_", "UNSIGNED_INT_") for shape in SHAPES]
OPAQUE_TYPES += [f"GL_SAMPLER_{shape}" for shape in SHADOW_SHAPES]

BANNER = ("// Written by tools/generate_gl_loader.py from the Khronos OpenGL registry. "
          "Change the script, not this file.\n")


def normal_spacing(text):
    """`const GLchar *const*string` and its like in this project's spacing."""
    return " ".join(text.replace("*", "* ").split()).replace(" *", "*")


def registry_order(root):
    """Every OpenGL command once, in the order in which the registry's versions and extensions name it."""
    order = {}
    for feature in root.findall("feature[@api='gl']") + root.findall("extensions/extension"):
        for command in feature.findall("require/command"):
            order.setdefault(command.get("name"), len(order))
    return order


def function_line(macro, command):
    name = command.find("proto/name").text
    result = normal_spacing("".join(command.find("proto").itertext())[:-len(name)])
    parameters = [normal_spacing("".join(parameter.itertext())) for parameter in command.findall("param")]
    arguments = [parameter.find("name").text for parameter in command.findall("param")]
    return f"{macro}({result}, {name},\n    ({', '.join(parameters)}),\n    ({', '.join(arguments)}))\n"


def functions_text(root):
    order = registry_order(root)
    commands = {command.find("proto/name").text: command for command in root.findall("commands/command")}
    text = BANNER
    text += ("// GL_SYSTEM_FUNCTION: in the system's OpenGL library. GL_FUNCTION: answered by the driver, in registry "
             "order.\n")
    text += "// Both: result type, name, parameters, arguments.\n\n"
    for name in sorted(SYSTEM_FUNCTIONS, key=order.__getitem__):
        text += function_line("GL_SYSTEM_FUNCTION", commands[name])
    text += "\n"
    for name in sorted(DRIVER_FUNCTIONS, key=order.__getitem__):
        text += function_line("GL_FUNCTION", commands[name])
    return text


def constants_text(root):
    values = {}
    for entry in root.findall("enums/enum"):
        if entry.get("api") in (None, "gl"):
            values[entry.get("name")] = int(entry.get("value"), 0)
    text = BANNER
    text += "// GL_CONSTANT: name, value. GL_OPAQUE_TYPE: the same for the types of samplers and images.\n\n"
    for macro, names in (("GL_CONSTANT", CONSTANTS), ("GL_OPAQUE_TYPE", OPAQUE_TYPES)):
        text += "".join(f"{macro}({name}, 0x{values[name]:04X})\n" for name in names) + "\n"
    return text.rstrip("\n") + "\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--registry", default="/usr/share/khronos-api/gl.xml")
    parser.add_argument("--output", default="render", help="folder of the two files")
    options = parser.parse_args()
    if not pathlib.Path(options.registry).exists():
        sys.exit(f"{options.registry} is missing: install khronos-api or name the registry with --registry")
    root = ElementTree.parse(options.registry).getroot()
    folder = pathlib.Path(options.output)
    for name, text in (("gl_functions.inc", functions_text(root)), ("gl_constants.inc", constants_text(root))):
        (folder / name).write_bytes(text.encode("ascii"))


if __name__ == "__main__":
    main()
