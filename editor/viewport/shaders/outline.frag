#version 150 core

in vec2 place;

out vec4 fragment;

uniform sampler2D mask; // red: selected, green: selected and primary, blue: hovered
uniform vec2 maskPixel; // size of a pixel in units of the mask
uniform float outlineWidth; // in those pixels
uniform vec3 selectionColor;
uniform vec3 primaryColor;
uniform vec3 hoverColor;

const float tint = 0.16;
const int directions = 12;

void cover(vec3 color, float opacity)
{
    fragment = vec4(color, 1.0) * opacity + fragment * (1.0 - opacity);
}

void main()
{
    vec3 here = texture(mask, place).rgb;
    vec3 around = here;
    for (int i = 0; i < directions; ++i) {
        float angle = radians(360.0) * float(i) / float(directions);
        vec2 step = vec2(cos(angle), sin(angle)) * outlineWidth * maskPixel;
        around = max(around, texture(mask, place + step).rgb);
        around = max(around, texture(mask, place + step * 0.5).rgb);
    }
    vec3 line = around - here;

    fragment = vec4(0.0);
    cover(selectionColor, (here.r - here.g) * tint);
    cover(primaryColor, here.g * tint);
    cover(hoverColor, here.b * tint);
    cover(selectionColor, line.r);
    cover(primaryColor, line.g);
    cover(hoverColor, line.b);
}
