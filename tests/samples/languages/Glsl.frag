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
#if defined(GL_ES) && __VERSION__ > 300
uniform samplerCubeShadow sky; uniform isampler2DArray layers; writeonly uniform uimage2DMS target;
void second() { dmat3x2 m; mat4x4 n; gl_FragColor = vec4(gl_FrontFacing ? gl_PointSize : 0.5); }
#endif
