#include <vector>

/* Sums what a
   range holds. */
template <std::integral T>
constexpr auto Sum(const std::vector<T>& items) noexcept -> T {
    T total{}; // starts at 0
    for (const auto& item : items) total += item;
    return total;
}

#ifdef __cplusplus
enum class Mode : char8_t { Fast = 0x1F, Slow = 2u };
#endif

int main() {
    const char* text = "a \"quoted\" word // no comment";
    if (text[0] == '"' || text[1] == '\'') return static_cast<int>(1.5e3);
    co_return nullptr;
}
void Check(int n) { contract_assert(n > 0); }
