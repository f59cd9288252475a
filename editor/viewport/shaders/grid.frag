#version 150 core

in vec3 worldPosition;

out vec4 fragment;

uniform vec3 gridCentre;
uniform float gridReach;
uniform float gridStep;
uniform float gridBlend; // 0 to 1: how far the fine lines have faded on the way to the next step
uniform vec4 gridColor;

const vec3 xColor = vec3(0.86, 0.27, 0.29);
const vec3 zColor = vec3(0.26, 0.51, 0.90);

float lines(float step)
{
    vec2 cell = worldPosition.xz / step;
    vec2 width = fwidth(cell);
    vec2 away = abs(fract(cell - 0.5) - 0.5) / width;
    vec2 line = (1.0 - min(away, 1.0)) * (1.0 - smoothstep(0.15, 0.5, width));
    return max(line.x, line.y);
}

float axis(float coordinate)
{
    return 1.0 - min(abs(coordinate) / fwidth(coordinate) / 1.5, 1.0);
}

void main()
{
    float fine = lines(gridStep) * (1.0 - gridBlend) * 0.35;
    float middle = lines(gridStep * 10.0) * mix(1.0, 0.35, gridBlend);
    float coarse = lines(gridStep * 100.0);
    float onX = axis(worldPosition.z);
    float onZ = axis(worldPosition.x);

    float alpha = max(max(fine, middle), coarse) * gridColor.a;
    vec3 tone = mix(gridColor.rgb, xColor, onX);
    tone = mix(tone, zColor, onZ * (1.0 - onX));
    alpha = max(alpha, max(onX, onZ) * 0.8);

    float away = length(worldPosition.xz - gridCentre.xz) / gridReach;
    alpha *= 1.0 - smoothstep(0.1, 0.8, away);
    fragment = vec4(tone, 1.0) * alpha;
}
