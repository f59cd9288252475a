#version 150 core
#include view.glsl
#include instance.glsl
#include branch.glsl
#include marker.glsl

in vec3 vertexPosition;

void main()
{
    gl_Position = withinBranch(markerPosition(toWorld(vec3(0.0)), vertexPosition.xy));
}
