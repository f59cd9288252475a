in vec4 instanceRow0;
in vec4 instanceRow1;
in vec4 instanceRow2;
in vec4 instanceColor; // a: the item's place among the items

vec3 toWorld(vec3 position)
{
    vec4 point = vec4(position, 1.0);
    return vec3(dot(instanceRow0, point), dot(instanceRow1, point), dot(instanceRow2, point));
}
