#version 150 core

out vec2 place;

void main()
{
    place = vec2(gl_VertexID & 1, gl_VertexID >> 1); // corners of a strip of two
    gl_Position = vec4(place * 2.0 - 1.0, 0.0, 1.0);
}
