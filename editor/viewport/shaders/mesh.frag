#version 150 core

in vec3 worldPosition;
in vec3 worldNormal;
in vec4 color;

out vec4 fragment;

uniform vec3 eyePosition;

const vec3 skyLight = vec3(0.44, 0.47, 0.52);
const vec3 groundLight = vec3(0.20, 0.18, 0.17);
const vec3 sunDirection = normalize(vec3(0.22, 0.75, 0.62));
const vec3 sunLight = vec3(0.48, 0.46, 0.42);
const vec3 headLight = vec3(0.12);

void main()
{
    vec3 toEye = normalize(eyePosition - worldPosition);

    // The side that shows is lit, whatever the winding or a mirrored transform say.
    vec3 face = cross(dFdx(worldPosition), dFdy(worldPosition));
    face = dot(face, toEye) < 0.0 ? -face : face;
    vec3 normal = dot(worldNormal, worldNormal) > 0.0 ? normalize(worldNormal) : normalize(face);
    normal = dot(normal, face) < 0.0 ? -normal : normal;

    vec3 light = mix(groundLight, skyLight, normal.y * 0.5 + 0.5);
    light += sunLight * max(dot(normal, sunDirection), 0.0);
    light += headLight * max(dot(normal, toEye), 0.0);

    vec3 halfway = normalize(toEye + sunDirection);
    float gloss = pow(max(dot(normal, halfway), 0.0), 40.0) * 0.10;

    vec3 albedo = pow(color.rgb, vec3(2.2));
    fragment = vec4(pow(albedo * light + gloss, vec3(1.0 / 2.2)), 1.0);
}
