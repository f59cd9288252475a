#version 150 core

in float onSign;
in vec4 color;

out vec4 fragment;

const vec4 plate = vec4(0.10, 0.11, 0.13, 0.85);

void main()
{
    fragment = mix(vec4(plate.rgb * plate.a, plate.a), vec4(color.rgb, 1.0), onSign);
}
