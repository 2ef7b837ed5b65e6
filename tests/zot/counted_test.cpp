#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <set>
#include <vector>
#include <zot/counted.h>
#include <zot/fast_vector.h>
#include <zot/messages.h>
#include <zot/ref_count.h>
#include <zot/ref_count_vector.h>
#include <zot/smart_ptr.h>

namespace {

int alive = 0;

class Thing : public ZOT::PoolObject {
public:
    Thing() { ++alive; }
    Thing(const Thing& other) : counter_(other.counter_) { ++alive; }
    Thing& operator=(const Thing&) = default;
    ~Thing() { --alive; }
    long NbRef() const { return counter_.Get(); }
    long AddRef() const { return counter_.Add(); }
    long Release() const {
        const long left = counter_.Sub();
        if (left == 0) delete this;
        return left;
    }

private:
    mutable ZOT::SPRefCounter counter_;
};

using Handle = ZOT::SmartPtr<Thing>;
using Handles = ZOT::RefCountVector<Thing, Handle>;

TEST(SmartPtr, OwnsOneReference) {
    {
        Handle first(new Thing, true);
        EXPECT_EQ(first->NbRef(), 1);
        Handle second(first);
        EXPECT_EQ(first->NbRef(), 2);
        second = first;
        second = first.Get();
        EXPECT_EQ(first->NbRef(), 2);
        EXPECT_TRUE(first == second && !(first < second) && !(second < first));
        EXPECT_EQ(first->AddRef(), 3);
        EXPECT_EQ(first->Release(), 2);
        second = Handle();
        EXPECT_EQ(alive, 1);
    }
    EXPECT_EQ(alive, 0);
}

TEST(SmartPtr, OrdersByAddress) {
    const Handle handles[] = {Handle(new Thing, true), Handle(new Thing, true), Handle()};
    for (const Handle& a : handles) {
        for (const Handle& b : handles) EXPECT_EQ(a < b, std::less<const Thing*>()(a.Get(), b.Get()));
    }
}

TEST(SPRefCounter, IsNotCopied) {
    Thing thing;
    thing.AddRef();
    Thing copy(thing);
    EXPECT_EQ(copy.NbRef(), 0);
    copy = thing;
    EXPECT_EQ(copy.NbRef(), 0);
}

TEST(RefCount, SharesAndDeletesOnce) {
    {
        ZOT::RefCount<Thing> empty(nullptr);
        ZOT::RefCount<Thing> also(empty);
        also = empty;
        EXPECT_EQ(also.NbRef(), 0);
        ZOT::RefCount<Thing> holder(new Thing);
        also = holder;
        const ZOT::RefCount<Thing>& self = also;
        also = self;
        EXPECT_EQ(holder.NbRef(), 2);
        holder = empty;
        EXPECT_EQ(alive, 1);
    }
    EXPECT_EQ(alive, 0);
}

struct Link : ZOT::PoolObject {
    ZOT::RefCount<Link> next;
    Thing thing;
};

TEST(RefCount, TakesWhatIsReachedThroughItsOwnValue) {
    {
        ZOT::RefCount<Link> chain(new Link);
        chain->next = ZOT::RefCount<Link>(new Link);
        Link* const second = chain->next.Get();
        chain = chain->next;
        EXPECT_EQ(chain.Get(), second);
        EXPECT_EQ(chain.NbRef(), 1);
        EXPECT_EQ(alive, 1);
    }
    EXPECT_EQ(alive, 0);
}

TEST(RefCountVector, DoublesWithoutTouchingCounts) {
    {
        Handles handles;
        const Handle thing(new Thing, true);
        std::vector<std::size_t> capacities;
        for (int i = 0; i < 9; ++i) {
            EXPECT_TRUE(handles.Append(i == 0 ? thing : handles[0]));
            if (capacities.empty() || capacities.back() != handles.Capacity())
                capacities.push_back(handles.Capacity());
        }
        EXPECT_EQ(capacities, (std::vector<std::size_t>{1, 2, 4, 8, 16}));
        EXPECT_EQ(thing->NbRef(), 10);
        EXPECT_TRUE(handles.Reserve(100));
        EXPECT_EQ(thing->NbRef(), 10);
        handles.Clear();
        EXPECT_EQ(thing->NbRef(), 1);
        const Handles sized(3);
        EXPECT_EQ(sized.Size(), 3u);
        EXPECT_FALSE(sized[2]);
    }
    EXPECT_EQ(alive, 0);
}

TEST(FastVector, GrowsByTwoThenByAQuarter) {
    ZOT::FastVector<unsigned int> numbers;
    std::vector<std::size_t> capacities;
    for (unsigned int i = 0; i < 1300; ++i) {
        EXPECT_TRUE(numbers.Append(i));
        if (capacities.empty() || capacities.back() != numbers.Capacity())
            capacities.push_back(numbers.Capacity());
    }
    EXPECT_EQ(capacities, (std::vector<std::size_t>{16, 32, 64, 128, 256, 512, 640, 800, 1000, 1250, 1562}));
    EXPECT_EQ(numbers[1299], 1299u);
    EXPECT_TRUE(numbers.Resize(10));
    EXPECT_EQ(numbers.Size(), 10u);
    EXPECT_FALSE(numbers.Resize(static_cast<std::size_t>(-1) / 2));
    EXPECT_EQ(numbers.Size(), 10u);
    numbers.Free();
    EXPECT_EQ(numbers.Capacity(), 0u);
    EXPECT_EQ(ZOT::FastVector<double>(7).Size(), 7u);
}

TEST(FastVector, ReservesAndResizesExactly) {
    ZOT::FastVector<unsigned int> numbers;
    EXPECT_TRUE(numbers.Reserve(20));
    EXPECT_EQ(numbers.Capacity(), 20u);
    EXPECT_TRUE(numbers.Reserve(10) && numbers.Resize(20));
    EXPECT_EQ(numbers.Capacity(), 20u);
    numbers[0] = 7;
    EXPECT_TRUE(numbers.Append(numbers[0]));  // which moves the array
    EXPECT_EQ(numbers[20], 7u);
    EXPECT_EQ(numbers.Capacity(), 40u);
    EXPECT_TRUE(numbers.Resize(41));
    EXPECT_EQ(numbers.Capacity(), 41u);
    EXPECT_EQ(numbers[20], 7u);
}

int handled = 0;

TEST(PoolObject, CallsTheNewHandlerOnceAndGivesNull) {
    handled = 0;
    const std::new_handler old = std::set_new_handler([] { ++handled; });
    EXPECT_EQ(ZOT::PoolAllocate(static_cast<std::size_t>(-1)), nullptr);
    EXPECT_EQ(handled, 1);
    EXPECT_EQ(ZOT::PoolAllocate(0), nullptr);
    EXPECT_EQ(handled, 1);
    std::set_new_handler([] { throw std::bad_alloc(); });
    EXPECT_EQ(ZOT::PoolAllocate(static_cast<std::size_t>(-1)), nullptr);
    std::set_new_handler(old);
    ZOT::PoolFree(nullptr);
}

TEST(ZotMessages, CountsRegistrations) {
    const long before = ZOTMessagesInit::m_cnt;
    {
        const ZOTMessagesInit one;
        const ZOTMessagesInit two;
        EXPECT_EQ(ZOTMessagesInit::m_cnt, before + 2);
    }
    EXPECT_EQ(ZOTMessagesInit::m_cnt, before);
}

}  // namespace
