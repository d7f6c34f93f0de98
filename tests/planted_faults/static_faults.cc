// Never built: a fault for each tool of ./test static, which must find it. This line is too long for the layout, too.
#include <string>
#include <utility>

int readsPastTheEnd() {
    int numbers[2] = {1, 2};
    return numbers[2];
}

std::string usedAfterItWasMoved(std::string text) {
    std::string moved = std::move(text);
    return text + moved;
}

int shadowed(int number) {
    if (number > 0) {
        int number = 1;
        return number;
    }
    return number;
}
