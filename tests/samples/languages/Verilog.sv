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
`celldefine
module cell_model (input wire a, output wire y);
    specify specparam rise = 3; endspecify
    tranif1 (y, a, a); trireg medium kept; wire (strong1, weak0) b = a;
    nettype real level; covergroup c; coverpoint a { bins low = {0}; ignore_bins no = {1}; } endgroup
    assert property (a s_until_with y); unique0 case (a) endcase wait_order (a, y);
    wire [7:0] w = 8'hFF; // a sized number begins a string
endmodule
`endcelldefine
