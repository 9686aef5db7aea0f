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
RWByteAddressBuffer raw; RWTexture3D<float4> space; Texture2DMS<half3x4> samples;
struct Out { int2x2 a; float3x4 b : SV_Target0; bool c : SV_PrimitiveID; float d : SV_ClipDistance; };
[unroll] void cut(triangle Out three[3], inout LineStream<Out> lines) {}
technique11 draw { pass0 { SetPixelShader(CompileShader(ps_5_0, main())); } }
