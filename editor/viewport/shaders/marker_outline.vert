#version 150 core
#include view.glsl
#include instance.glsl
#include marker.glsl
#include outline.glsl

in vec3 vertexPosition;

out vec4 color;

void main()
{
    color = instanceColor;
    gl_Position = markerPosition(toWorld(vec3(0.0)), vertexPosition.xy);
    gl_Position.xy += outlineOffset(gl_Position.w);
}
