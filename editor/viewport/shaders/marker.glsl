uniform float markerRadius; // in pixels
uniform float markerLift; // share of the distance by which a marker comes nearer

// A marker keeps its size on the screen and shows in front of the lamp around it.
vec4 markerPosition(vec3 origin, vec2 offset)
{
    vec4 clip = viewProjection * vec4(mix(origin, eyePosition, markerLift), 1.0);
    clip.xy += offset * markerRadius * 2.0 / viewportSize * clip.w;
    return clip;
}
