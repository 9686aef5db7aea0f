% Smooths a signal.
%{
Every value becomes the mean
of its neighbours.
%}
function y = smooth(x, width)
    if nargin < 2
        width = 3; % the usual one
    end
    y = zeros(size(x));
    for k = 1:numel(x)
        y(k) = mean(x(max(1, k - width):k)) * 1.5e3;
    end
    while true, break, end
    disp("done"), title('it is done')
end
y = x'; % a transposition begins a string
# Octave's sign
classdef Box
    enumeration
        One
    endenumeration
    methods
    endmethods
endclassdef
import pkg.Box
