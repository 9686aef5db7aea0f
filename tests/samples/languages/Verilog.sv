// A counter with a reset.
`timescale 1ns / 1ps

/* Counts up
   with every edge. */
module counter #(parameter WIDTH = 8) (
    input  wire clk, reset,
    output reg [WIDTH-1:0] q
);
    always @(posedge clk or negedge reset) begin
        if (!reset)
            q <= 0;
        else
            q <= q + 1; // wraps
    end

    initial $display("width \"%0d\"", WIDTH);
endmodule
