#include <List.h>

#include <initializer_list>
#include <string>

#include <gtest/gtest.h>

namespace {

// Items are numbers in the shape of pointers.
void* item(intptr_t number) {
    return reinterpret_cast<void*>(number);
}

BList listOf(std::initializer_list<intptr_t> numbers) {
    BList list(2);
    for (intptr_t number : numbers)
        list.AddItem(item(number));
    return list;
}

std::string show(const BList& list) {
    std::string text;
    for (int32 i = 0; i < list.CountItems(); i++)
        text += std::to_string(reinterpret_cast<intptr_t>(list.ItemAt(i)));
    return text;
}

int descending(const void* a, const void* b) {
    auto number = [](const void* pointer) { return *static_cast<const intptr_t*>(pointer); };
    return static_cast<int>(number(b) - number(a));
}

} // namespace

TEST(BList, AddsAtAnyPlace) {
    BList list = listOf({1, 2});
    EXPECT_TRUE(list.AddItem(item(3), 0));
    EXPECT_TRUE(list.AddItem(item(4), 3));
    EXPECT_FALSE(list.AddItem(item(5), 5));
    EXPECT_FALSE(list.AddItem(item(5), -1));
    EXPECT_EQ("3124", show(list));
}

TEST(BList, AddsAListEvenToItself) {
    BList list = listOf({1, 2});
    BList other = listOf({8, 9});
    EXPECT_TRUE(list.AddList(&other, 1));
    EXPECT_EQ("1892", show(list));
    EXPECT_TRUE(list.AddList(&list, 2));
    EXPECT_EQ("18189292", show(list));
}

TEST(BList, RemovesByItemAndIndex) {
    BList list = listOf({1, 2, 1, 3, 4});
    EXPECT_TRUE(list.RemoveItem(item(1)));
    EXPECT_EQ("2134", show(list));
    EXPECT_EQ(item(3), list.RemoveItem(int32(2)));
    EXPECT_EQ(nullptr, list.RemoveItem(int32(7)));
    EXPECT_TRUE(list.RemoveItems(1, 100));
    EXPECT_EQ("2", show(list));
    EXPECT_FALSE(list.RemoveItem(item(9)));
}

TEST(BList, MovesSwapsAndSorts) {
    BList list = listOf({1, 2, 3, 4});
    EXPECT_TRUE(list.MoveItem(0, 2));
    EXPECT_EQ("2314", show(list));
    EXPECT_TRUE(list.MoveItem(3, 0));
    EXPECT_EQ("4231", show(list));
    EXPECT_TRUE(list.SwapItems(0, 3));
    EXPECT_EQ("1234", show(list));
    list.SortItems(descending);
    EXPECT_EQ("4321", show(list));
    EXPECT_FALSE(list.MoveItem(0, 4));
    EXPECT_FALSE(list.SwapItems(-1, 0));
}

TEST(BList, AnIndexOutsideIsANullItem) {
    BList list = listOf({1});
    EXPECT_EQ(nullptr, list.ItemAt(1));
    EXPECT_EQ(nullptr, list.ItemAt(-1));
    EXPECT_EQ(-1, list.IndexOf(item(2)));
    EXPECT_EQ(nullptr, BList().FirstItem());
    EXPECT_EQ(nullptr, BList().LastItem());
}

TEST(BList, ACopyIsAListOfItsOwn) {
    BList list = listOf({1, 2});
    BList copy(list);
    EXPECT_TRUE(copy == list);
    copy.AddItem(item(3));
    EXPECT_TRUE(copy != list);
    EXPECT_EQ("12", show(list));
}

TEST(BList, AWalkEndsWhenAnItemSaysSo) {
    BList list = listOf({1, 2, 3});
    int seen = 0;
    list.DoForEach(
        [](void* current, void* count) {
            ++*static_cast<int*>(count);
            return current == item(2);
        },
        &seen);
    EXPECT_EQ(2, seen);
}
