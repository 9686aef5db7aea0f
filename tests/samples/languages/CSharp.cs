#region Shapes
using System;

namespace Shapes;

/* One corner
   of a shape. */
public sealed record Corner(double X, double Y = 0.5)
{
    public required string Name { get; init; }

    // Distances are in metres.
    public async Task<double> Length() => await Measure($"name {Name}", 'x');

    private static bool IsFar(Corner? c) => c is not null && c.X > 1_000m;
}
#endregion
static class Corners
{
    extension<T>(T corner) where T : allows ref struct
    {
        public void Move() { }
    }
}
