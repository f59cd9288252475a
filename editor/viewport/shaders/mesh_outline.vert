#version 150 core
#include view.glsl
#include instance.glsl
#include outline.glsl

in vec3 vertexPosition;

out vec4 color;

void main()
{
    color = instanceColor;
    gl_Position = viewProjection * vec4(toWorld(vertexPosition), 1.0);
    gl_Position.xy += outlineOffset(gl_Position.w);
}
