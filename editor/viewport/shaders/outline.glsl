uniform float outlineWidth; // in pixels

// Where to move a point of the screen for this repeat of the instance.
vec2 outlineOffset(float w)
{
    float angle = radians(45.0) * float(gl_InstanceID % 8);
    return vec2(cos(angle), sin(angle)) * outlineWidth * 2.0 / viewportSize * w;
}
