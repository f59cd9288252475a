#version 150 core
#include view.glsl
#include instance.glsl

in vec3 vertexPosition;
in vec3 vertexNormal;

out vec3 worldPosition;
out vec3 worldNormal;
out vec4 color;

void main()
{
    // Normals go by the cofactors, which hold for uneven, flattened and mirrored transforms.
    worldNormal = vec3(dot(cross(instanceRow1.xyz, instanceRow2.xyz), vertexNormal),
                       dot(cross(instanceRow2.xyz, instanceRow0.xyz), vertexNormal),
                       dot(cross(instanceRow0.xyz, instanceRow1.xyz), vertexNormal));
    worldPosition = toWorld(vertexPosition);
    color = instanceColor;
    gl_Position = viewProjection * vec4(worldPosition, 1.0);
}
