#version 150 core

in vec4 color;

out vec4 fragment;

uniform float opacity;

void main()
{
    fragment = vec4(color.rgb, 1.0) * color.a * opacity;
}
