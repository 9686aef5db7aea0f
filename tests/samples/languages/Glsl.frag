#version 330 core
// The colour of a point.
in vec2 place;
out vec4 colour;
uniform sampler2D image;
uniform float time;

/* Waves that
   move. */
void main() {
    float wave = sin(place.x * 10.0 + time) * 0.5;
    if (wave < 0.0) discard;
#ifdef DARK
    colour = vec4(0u);
#else
    colour = texture(image, place) * wave;
#endif
}
