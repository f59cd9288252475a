#version 150 core

in vec4 color; // which of the mask's channels to set

out vec4 fragment;

void main()
{
    fragment = color;
}
