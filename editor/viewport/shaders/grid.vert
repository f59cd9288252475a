#version 150 core
#include view.glsl

out vec3 worldPosition;

uniform vec3 gridCentre;
uniform float gridReach;

void main()
{
    vec2 corner = vec2(gl_VertexID & 1, gl_VertexID >> 1) * 2.0 - 1.0; // of a strip of two
    worldPosition = gridCentre + vec3(corner.x, 0.0, corner.y) * gridReach;
    gl_Position = viewProjection * vec4(worldPosition, 1.0);
    gl_Position.z += 2e-5 * gl_Position.w; // gives way to a floor in the same plane
}
