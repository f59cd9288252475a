#version 150 core

out vec4 fragment;

uniform vec4 channels; // which of the mask's channels to set

void main()
{
    fragment = channels;
}
