#include "author/rule_words.h"

namespace vorek {
namespace {

constexpr RuleWords kLayoutRules[] = {
    {Rule::kLayoutGap,
     Severity::kWarning,
     "layout-gap",
     {{{"there is no row for column %1, but one for column %2",
        "the layout ends at the gap: columns from %1 on take the default width and alignment, and "
        "rows for them don't count",
        "a row for each column up to the last"},
       {"ستون %1 سطر ندارد، اما ستون %2 دارد",
        "چيدمان در جاي خالي تمام مي شود: ستونهاي %1 به بعد پهنا و چينش پيش فرض مي گيرد و سطرهاي "
        "آنها به "
        "شمار نمي آيد",
        "براي هر ستون تا آخري يك سطر"}}}},
    {Rule::kLayoutBeyond,
     Severity::kWarning,
     "layout-beyond",
     {{{"the result has %1 columns", "the row lays out nothing",
        "a column from 1 to %1, or no such row"},
       {"نتيجه %1 ستون دارد", "اين سطر چيزي را نمي چيند", "ستوني از 1 تا %1، يا حذف اين سطر"}}}},
    {Rule::kLayoutEnd,
     Severity::kError,
     "layout-end",
     {{{"columns end at 2500", "the row is passed over", "a column from 1 to 2500"},
       {"ستونها در 2500 تمام مي شود", "اين سطر ناديده مي ماند", "ستوني از 1 تا 2500"}}}},
    {Rule::kLayoutTwice,
     Severity::kWarning,
     "layout-twice",
     {{{"there are %1 rows for this column", "one of them counts, and nothing says which",
        "one row for each column"},
       {"براي اين ستون %1 سطر هست", "يكي به شمار مي آيد و معلوم نيست كدام",
        "براي هر ستون يك سطر"}}}},
    {Rule::kWidth,
     Severity::kWarning,
     "width",
     {{{"%1 is no width", "the column keeps another width",
        "twips from 0 (hidden) to 32767; 1200 is a column of some ten digits"},
       {"%1 پهنا نيست", "ستون پهناي ديگري مي گيرد",
        "از 0 (پنهان) تا 32767 توييپ؛ 1200 ستوني با حدود ده رقم است"}}}},
    {Rule::kAlignment,
     Severity::kWarning,
     "alignment",
     {{{"%1 is no alignment", "the grid is given a number that it doesn't know",
        "4 centre, 7 right, 1 left"},
       {"%1 چينش نيست", "جدول عددي مي گيرد كه نمي شناسد", "4 وسط، 7 راست، 1 چپ"}}}},
    {Rule::kSpreadTwice,
     Severity::kError,
     "spread-twice",
     {{{"%1 columns are to be spread", "a cross table spreads one: the last one read wins",
        "TransposeType 1 in one row alone"},
       {"%1 ستون براي پخش شدن نشان شده است", "جدول متقاطع يكي را پخش مي كند: آخرين سطر خوانده شده",
        "TransposeType برابر 1 تنها در يك سطر"}}}},
    {Rule::kNothingSpread,
     Severity::kWarning,
     "nothing-spread",
     {{{"MakeTranspose is 1, but no column of the layout is to be spread",
        "the rows show as a flat table, and exports and prints are empty",
        "TransposeType 1 for the column whose values become columns, 2 for the base columns"},
       {"MakeTranspose برابر 1 است، اما در چيدمان ستوني براي پخش شدن نيست",
        "سطرها به شكل جدول ساده مي آيد و خروجي و چاپ خالي است",
        "TransposeType برابر 1 براي ستوني كه مقدارهايش ستون مي شود و 2 براي ستونهاي پايه"}}}},
    {Rule::kNoFoldKey,
     Severity::kWarning,
     "no-fold-key",
     {{{"MakeMerge is 1, but no column of the layout is the key", "no rows are folded",
        "MergeType 1 for the key, 2 for what is added, 3 for what is joined"},
       {"MakeMerge برابر 1 است، اما در چيدمان ستون كليد نيست", "هيچ سطري ادغام نمي شود",
        "MergeType برابر 1 براي كليد، 2 براي آنچه جمع مي شود، 3 براي آنچه به هم مي پيوندد"}}}},
};

}  // namespace

std::span<const RuleWords> LayoutRuleWords() { return kLayoutRules; }

}  // namespace vorek
