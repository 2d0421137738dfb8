// The carrier of a caller's data: who holds the shared block, and what each sees of it.
#include "module/shell_ext_parameters.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <utility>

#include "dialog/find_dialog.h"
#include "found/found_list.h"
#include "module/module_state.h"
#include "platform/wtext.h"

namespace {

const SRxShellExtParameterBlock* BlockOf(const SRxShellExtParameters& carrier) {
    return reinterpret_cast<const SRxShellExtParameterBlock*>(static_cast<const char*>(carrier));
}

unsigned Count(const SRxShellExtParameters& carrier) {
    return BlockOf(carrier) != nullptr ? BlockOf(carrier)->refCount : 0;
}

SRxSkippedCritNode* MakeChain(int length) {
    SRxSkippedCritNode* head = nullptr;
    for (; length > 0; --length) {
        auto* link = new SRxSkippedCritNode(1, eSkippedKind::Plain);
        link->next = head;
        head = link;
    }
    return head;
}

std::string Colors(const SRxShellExtParameters& carrier) {
    std::string all;
    for (std::size_t i = 0; i < carrier.GetColorCount(); ++i)
        all += wtext::ToUtf8(*carrier.GetColor(static_cast<int>(i))) + " ";
    return all;
}

TEST(ShellExtParameters, AnEmptyCarrierGivesNothingAndMakesNothing) {
    SRxShellExtParameters carrier;
    const SRxShellExtParameters fromNull(nullptr);
    for (const auto* each : {&std::as_const(carrier), &fromNull}) {
        EXPECT_TRUE(!*each);
        EXPECT_EQ(nullptr, static_cast<const char*>(*each));
        EXPECT_EQ(0u, each->GetColorCount());
        EXPECT_EQ(nullptr, each->GetColor(0));
        EXPECT_EQ(nullptr, each->GetServer());
        EXPECT_EQ(nullptr, each->GetCritForSkipped());
        EXPECT_FALSE(each->HaveColors() || each->HaveServer() || each->HaveCritForSkipped());
    }
    carrier.Clean();
    carrier.EraseColors();
    carrier.SortColors();
    carrier.Assign(nullptr);
    carrier = fromNull;
    EXPECT_FALSE(carrier.Destroy());
    EXPECT_FALSE(carrier.IsValid());
}

// The way of one block from the caller through a search and back.
TEST(ShellExtParameters, CountsOfAJourney) {
    SRxShellExtParameters caller;
    ASSERT_TRUE(caller.AddColor(TEXT("red"), false));
    EXPECT_EQ(1u, Count(caller));
    const char* const text = caller;
    auto dialog =
        std::make_unique<SRxFindDialog>(SrResReturnHandle(), nullptr, nullptr, nullptr, nullptr);
    {
        SRxShellExtParameters local;
        local.Assign(text);
        EXPECT_EQ(2u, Count(caller));
        dialog->SetParams(local);
        EXPECT_EQ(3u, Count(caller));
    }
    EXPECT_EQ(2u, Count(caller));
    auto search = std::make_unique<SRxFoundList>(dialog->links, nullptr);
    search->run.params = dialog->params;
    EXPECT_EQ(3u, Count(caller));
    ASSERT_TRUE(search->run.params.SetCritForSkipped(MakeChain(2)));
    search.reset();
    EXPECT_EQ(2u, Count(caller));
    EXPECT_TRUE(caller.HaveCritForSkipped()) << "the answer stays with the caller";
    dialog.reset();
    EXPECT_EQ(1u, Count(caller));
    EXPECT_TRUE(caller.Destroy());
    EXPECT_FALSE(caller.Destroy());
}

TEST(ShellExtParameters, CarriersOfOneBlockSeeEachOther) {
    SRxShellExtParameters a;
    ASSERT_TRUE(a.AddColor(TEXT("b"), false));
    SRxShellExtParameters b(a);
    const SRxShellExtParameters c(static_cast<const char*>(b));
    ASSERT_TRUE(b.AddColor(TEXT("B"), true));
    ASSERT_TRUE(a.AddColor(TEXT("ab"), false));
    ASSERT_TRUE(a.AddColor(TEXT("b"), false));
    ASSERT_TRUE(a.AddColor(TEXT("a"), true));
    EXPECT_EQ("a B b ab b ", Colors(c));
    a.SortColors();
    EXPECT_EQ("B a ab b b ", Colors(c));
    ASSERT_TRUE(b.SetCritForSkipped(MakeChain(1)));
    ASSERT_TRUE(b.SetServer(nullptr));
    EXPECT_TRUE(c.HaveServer());
    EXPECT_EQ(nullptr, c.GetServer());
    a.Clean();
    EXPECT_FALSE(c.HaveColors() || c.HaveServer() || c.HaveCritForSkipped());
    EXPECT_TRUE(b.IsValid());
    EXPECT_EQ(3u, Count(c));
    ASSERT_TRUE(a.AddColor(TEXT("x"), false));
    b.EraseColors();
    EXPECT_EQ("", Colors(a));
    EXPECT_FALSE(a.Destroy()) << "two others hold it";
    EXPECT_EQ(2u, Count(c));
}

TEST(ShellExtParameters, AssigningItselfAndAnother) {
    SRxShellExtParameters a;
    ASSERT_TRUE(a.AddColor(TEXT("a"), false));
    SRxShellExtParameters& same = a;
    a = same;
    a.CopyFrom(same);
    a.Assign(a);
    EXPECT_EQ("a ", Colors(a));
    EXPECT_EQ(1u, Count(a));
    SRxShellExtParameters b;
    ASSERT_TRUE(b.AddColor(TEXT("b"), false));
    SRxShellExtParameters other(b);
    b = a;
    EXPECT_EQ("a ", Colors(b));
    EXPECT_EQ(2u, Count(a));
    EXPECT_EQ(1u, Count(other));
    b.Assign(nullptr);
    EXPECT_TRUE(!b);
    EXPECT_EQ(1u, Count(a));
}

TEST(ShellExtParameters, OutOfRangeAndSkippedChains) {
    SRxShellExtParameters carrier;
    ASSERT_TRUE(carrier.AddColor(TEXT("red"), false));
    ASSERT_TRUE(carrier.AddColor(TEXT("blue"), false));
    for (const int index : {-1, 2, 1000, std::numeric_limits<int>::min()})
        EXPECT_EQ(nullptr, carrier.GetColor(index)) << index;
    // A long chain takes no stack; a replaced one is freed.
    ASSERT_TRUE(carrier.SetCritForSkipped(MakeChain(2000000)));
    SRxSkippedCritNode* const head = MakeChain(1);
    ASSERT_TRUE(carrier.SetCritForSkipped(head));
    EXPECT_EQ(head, carrier.GetCritForSkipped());
    EXPECT_EQ(nullptr, head->next);
    ASSERT_TRUE(carrier.SetCritForSkipped(nullptr));
    EXPECT_FALSE(carrier.HaveCritForSkipped());
}

}  // namespace
