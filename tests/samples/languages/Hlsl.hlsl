// The colour of a point.
#include "common.hlsli"
cbuffer Frame : register(b0)
{
    float4x4 world;
    float time;
};

Texture2D image;
SamplerState linearSampler;

/* Waves that
   move. */
float4 main(float2 place : TEXCOORD0) : SV_Target
{
    const float wave = sin(place.x * 10.0f + time);
    if (wave < 0) discard;
    return image.Sample(linearSampler, place) * wave;
}
