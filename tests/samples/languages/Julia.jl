# Roots by halving.
#= The interval has to
   hold a root. =#
module Roots
export halve

function halve(f, low::Float64, high = 1.5e3)
    while high - low > 1e3
        middle = (low + high) / 2 # between them
        if f(middle) < 0x10 && !isnan(middle)
            low = middle
        else
            return nothing
        end
    end
    @assert low != Inf "no \"root\""
    'x'
end
end
