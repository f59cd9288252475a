uniform mat4 viewProjection;
uniform vec3 eyePosition;
uniform vec2 viewportSize; // in pixels

