#version 150 core
#include view.glsl
#include instance.glsl
#include branch.glsl

in vec3 vertexPosition;

void main()
{
    gl_Position = withinBranch(viewProjection * vec4(toWorld(vertexPosition), 1.0));
}
