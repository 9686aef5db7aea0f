const std = @import("std");

// A list of bytes.
pub fn sum(items: []const u8) !u32 {
    var total: u32 = 0;
    for (items) |item| {
        if (item == '\'') continue;
        total += @as(u32, item); // widened
    }
    if (total > 0xFF) return error.TooLarge;
    return total orelse undefined;
}

test "sum \"all\"" {
    try std.testing.expect(true and 1.5e3 > 1);
}
const c = @cImport({ @cInclude("stdio.h"); });
export fn show(n: c_int, x: @Vector(4, f32)) c_longlong { // from C
    return @divFloor(@popCount(n), @intFromPtr(@fieldParentPtr("a", &x)));
}
