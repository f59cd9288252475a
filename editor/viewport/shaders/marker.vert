#version 150 core
#include view.glsl
#include instance.glsl
#include marker.glsl

in vec3 vertexPosition;
in vec3 vertexNormal; // x: 1 in the sign, 0 on the plate behind it

out float onSign;
out vec4 color;

void main()
{
    onSign = vertexNormal.x;
    color = instanceColor;
    gl_Position = markerPosition(toWorld(vec3(0.0)), vertexPosition.xy);
}
