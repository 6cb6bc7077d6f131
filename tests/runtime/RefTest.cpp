#include "runtime/Ref.h"

#include "runtime/Support.h"

namespace {

struct Counted
{
    explicit Counted(int *alive) : m_alive(alive) { ++*m_alive; }
    ~Counted() { --*m_alive; }
    Counted(const Counted &) = delete;
    Counted &operator=(const Counted &) = delete;

    int *m_alive;
    int value = 7;
};

struct Made
{
    int value = 3;
};

} // namespace

TEST(Ref, ToNoneRaisesObjectNotSetWhenFollowed)
{
    const Ref<Made> none;
    EXPECT_FALSE(none);
    EXPECT_EQ(none.get(), nullptr);
    EXPECT_EQ(errorOf([&] { (void)none->value; }), 91);
    EXPECT_EQ(errorOf([&] { (void)(*none).value; }), 91);
    EXPECT_FALSE(Ref<Made>(nullptr));
}

TEST(Ref, CountsItsObject)
{
    int alive = 0;
    auto first = Ref<Counted>::make(&alive);
    Ref<Counted> second = first;
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(first, second);
    EXPECT_EQ(second->value, 7);
    first.reset();
    EXPECT_FALSE(first);
    EXPECT_EQ(alive, 1);
    second = nullptr;
    EXPECT_EQ(alive, 0);
}

TEST(Ref, ToDifferentObjectsDiffer)
{
    EXPECT_NE(Ref<Made>::make(), Ref<Made>::make());
    EXPECT_EQ(Ref<Made>(), Ref<Made>(nullptr));
}

TEST(Ref, TakesAnObjectThatIsSharedElsewhere)
{
    const auto object = std::make_shared<Made>();
    const Ref<Made> reference(object);
    reference->value = 9;
    EXPECT_EQ(object->value, 9);
    EXPECT_EQ(&*reference, object.get());
}

TEST(AutoRef, MakesItsObjectWhenFirstFollowed)
{
    AutoRef<Made> reference;
    EXPECT_FALSE(reference);
    reference->value = 5;
    EXPECT_TRUE(reference);
    EXPECT_EQ((*reference).value, 5);
}

TEST(AutoRef, MakesAFreshObjectAfterReset)
{
    AutoRef<Made> reference;
    reference->value = 5;
    reference.reset();
    EXPECT_FALSE(reference);
    EXPECT_EQ(reference->value, 3);
}
