--[[ Counts words,
     one by one. ]]
local words = {}

-- The main loop.
local function count(text, limit)
    for word in text:gmatch("%a+") do
        words[word] = (words[word] or 0) + 1
        if #words > 0x10 then break end
    end
    return not limit and nil or 'full\''
end

print(count(io.read("*a"), 1.5e3))
