// Whatever allocation fails: nothing crashes, nothing leaks, and the object can be cleared and used again.

#include "tests/FailingMemory.h"

#include "zvi/command/CStrParser.h"
#include "zvi/command/MArrayParser.h"
#include "zvi/command/MNumericOptimizer.h"
#include "zvi/command/MParser.h"
#include "zvi/command/MStringToken.h"
#include "zvi/core/CArray.h"
#include "zvi/core/CMap.h"
#include "zvi/core/CStringArray.h"
#include "zvi/core/MArray.h"
#include "zvi/core/MFixedSizeMemMgr.h"
#include "zvi/core/MHashMap.h"
#include "zvi/core/MList.h"
#include "zvi/core/MQSort.h"
#include "zvi/core/Utf8.h"
#include "zvi/curves/MDomainMaker.h"
#include "zvi/drawing/CutDrawingCurves.h"
#include "zvi/drawing/MakeDrawingDomains.h"
#include "zvi/units/MUnitCtrl.h"

#include <memory>
#include <sstream>
#include <vector>

namespace zvi::lib::test {

namespace {

CString LongText(int number) {
    CString text;
    text.Format(L"a text that does not fit into the object itself: %d", number);
    return text;
}

template <typename List>
std::string TextOf(List const &list) {
    std::ostringstream text;
    for (auto const &element : list)
        if constexpr (std::is_convertible_v<decltype(element), CString const &>)
            text << Utf8Of(element) << ' ';
        else
            text << element << ' ';
    return text.str();
}

} // namespace

TEST_F(FailingMemoryTest, ArraysStayConsistent) {
    WorkInShortages<MArray<CString>>(
        [](MArray<CString> &texts) {
            texts.Clear();
            for (int i = 0; i < 5; ++i)
                texts.PushBack(LongText(i));
            MArray<CString> copy(texts);
            copy.RemoveAt(1);
            copy.PushBack(copy[0]);
            texts = copy;
            texts.Resize(9);
            texts.Reserve(20);
        },
        [](MArray<CString> const &texts) { return texts.IsConsistent() ? TextOf(texts) : "inconsistent"; });
    WorkInShortages<CStringArray>(
        [](CStringArray &texts) {
            texts.RemoveAll();
            for (int i = 0; i < 3; ++i)
                texts.Add(LongText(i));
            texts.InsertAt(1, L"a text to be found twice in front of the others", 2);
            texts.Append(texts);
            texts.RemoveAt(2, 3);
        },
        [](CStringArray const &texts) { return texts.IsConsistent() ? TextOf(texts) : "inconsistent"; });
}

/// Also at the moment of the failure, each kept what it had: a walk over the pairs or elements shows it.
TEST_F(FailingMemoryTest, MapsAndListsStayConsistent) {
    using Map = MHashMap<int, CString>;
    auto const textOf = [](auto const &map) {
        std::string text = map.IsConsistent() ? "" : "inconsistent ";
        for (auto const &[key, value] : map)
            text += std::to_string(key) + Utf8Of(value);
        return text;
    };
    WorkInShortages<std::vector<Map>>(
        [](std::vector<Map> &maps) {
            maps.clear();
            Map &map = maps.emplace_back();
            for (int i = 0; i < 45; ++i)
                map.SetAt(i * 7, LongText(i));
            Map copy(map);
            for (int i = 0; i < 40; ++i)
                map.RemoveKey(i * 7);
            map.Rehash(101);
            copy = map;
            map.InitHashTable(19, true);
            map.SetAt(3, L"alone");
            Map taken(std::move(map));
            maps.front() = copy;
        },
        [&](std::vector<Map> const &maps) { return textOf(maps.front()); });
    using Table = CMap<CString, int>;
    WorkInShortages<Table>(
        [](Table &table) {
            table.RemoveAll();
            for (int i = 0; i < 20; ++i)
                table[LongText(i)] = i;
            table.RemoveKey(LongText(3));
            Table const copy(table);
            table = copy;
        },
        [](Table const &table) {
            std::string text = table.IsConsistent() ? "" : "inconsistent ";
            for (auto const &[key, value] : table)
                text += Utf8Of(key) + std::to_string(value);
            return text;
        });
    using List = MList<CString>;
    WorkInShortages<List>(
        [](List &list) {
            list.RemoveAll();
            for (int i = 0; i < 25; ++i)
                list.AddTail(LongText(i));
            List const copy(list);
            list = copy;
        },
        [](List const &list) { return list.IsConsistent() ? TextOf(list) : "inconsistent"; });
}

TEST_F(FailingMemoryTest, PoolsTextsAndSortsGoOn) {
    struct Work {
        MFixedSizeMemMgr pool{16, 100};
        CString text;
        std::vector<CString> names;
    };
    WorkInShortages<Work>(
        [](Work &work) {
            work.pool.FreeAllMem();
            for (int i = 0; i < 20; ++i)
                work.pool.Free(i % 3 == 0 ? work.pool.Alloc() : (work.pool.Alloc(), work.pool.Alloc()));
            work.text = L"a long text that is cut, joined, formatted and replaced";
            work.text += work.text.Mid(7) + L" more";
            work.text.Replace(L"text", L"line of characters");
            work.text.AppendFormat(L"%s %30d %f", LongText(1).GetString(), 5, 1e100);
            work.text.MakeUpper().Trim(L"A ");
            std::vector<CString> names;
            for (int i = 0; i < 40; ++i)
                names.push_back(LongText(i * 7 % 40));
            work.names = names;
            std::vector<unsigned int> places(names.size());
            MQSort::QSortStringNumWithIndex(places.data(), work.names.data(), work.names.size());
        },
        [](Work const &work) {
            return Utf8Of(work.text) + TextOf(work.names) + (work.pool.IsConsistent() ? "" : "inconsistent");
        });
}

TEST_F(FailingMemoryTest, SortsLeaveTheirArraysComplete) {
    std::vector<double> keys(5000);
    for (std::size_t i = 0; i < keys.size(); ++i)
        keys[i] = static_cast<double>(i * 7919 % keys.size());
    std::vector<double> const before = keys;
    std::vector<int> places(keys.size());
    for (long index = 0; index < 2; ++index) {
        FailingMemory const memory(index, Shortage::kOnce);
        EXPECT_THROW(MQSort::QSortDblWithIndex(places.data(), keys.data(), keys.size()), std::bad_alloc);
        EXPECT_EQ(keys, before);
    }
}

TEST_F(FailingMemoryTest, ParsersReadTheNextLine) {
    struct Work {
        std::unique_ptr<MParser> parser;
        std::vector<double> numbers;
    };
    WorkInShortages<Work>(
        [](Work &work) {
            work.numbers.clear();
            if (!work.parser)
                work.parser = std::make_unique<MParser>();
            MParser &parser = *work.parser;
            CArray<int> nodes;
            CArray<double> coordinates;
            MUnitCtrl units(nullptr);
            std::string name = "HOUSE_RISE_AND_MORE_AND_MORE";
            parser.AddDoubleVar(name.data(), 3.0);
            double x = 0, y = 0, z = 0;
            unsigned int op = 0;
            if (parser.ParsingNodeList(L"1to9by2 20 5to1by-2 1 2 3 4 5 6 7 8 9 10", nodes) != 1 ||
                parser.ParsingPositionXYZList(L"[1,2,3] [4,5]", coordinates) != 1 ||
                parser.ParsingPositionNOp(L"@10<45", x, y, z, op) != 1 ||
                parser.ParsingGridDefineRel(L"3@2,2*HOUSE_RISE_AND_MORE_AND_MORE") != 1 ||
                parser.ParsingUNumberArg(L"2m+30cm", &units) != 1)
                throw std::bad_alloc();
            CArray<double> &grid = parser.GetGridArgList();
            VMCommand copy, taken;
            copy.AppendCopy(*parser.GetResult());
            copy.AddString("a text of an argument that is long enough");
            taken.TakeFrom(copy);
            taken.MakeText();
            work.numbers = {x, y, z, grid[0], static_cast<double>(taken.GetCount())};
            work.numbers.insert(work.numbers.end(), nodes.begin(), nodes.end());
            work.numbers.insert(work.numbers.end(), coordinates.begin(), coordinates.end());
        },
        [](Work const &work) { return work.numbers; });
}

TEST_F(FailingMemoryTest, ListsOfNumbersAndTextsAreReadAgain) {
    struct Work {
        MNumericOptimizer optimizer;
        CString text;
        MArray<long> selected;
        MArray<int> integers;
        CStringArray pieces;
    };
    WorkInShortages<Work>(
        [](Work &work) {
            MArray<long> numbers;
            for (int i = 0; i < 20; ++i)
                numbers.PushBack(i < 10 ? 2 * i : i * i);
            work.text = work.optimizer.OptimizeUnsortedArray(numbers);
            work.optimizer.SelectNumByStrKeepSeq(numbers, L"0to400 4 6", work.selected, 1);
            MArrayParser::ParseArray_Int(L"1,2,x,3", L',', work.integers);
            MArrayParser::ParseArray_String(L"one long piece of the text,another long piece of it", L',', work.pieces,
                                            0);
            MStringToken const token(L"a long first piece|a second one", L"|");
            work.text += token.GetCstring(1);
            CStrParser::ClearVariables();
            CStrParser::AddDoubleVar(L"SPAN_OF_A_HIGH_FLOOR_PLANE", 2.0);
            double value = 0.0;
            if (CStrParser::GetFloatNumber(L"3*SPAN_OF_A_HIGH_FLOOR_PLANE", value) != 1 || value != 6.0)
                throw std::bad_alloc();
            work.text += CStrParser::ConvtDistArr2DistStr({2.0, 2.0, 5.0});
            CStrParser::ClearVariables();
        },
        [](Work const &work) {
            return Utf8Of(work.text) + TextOf(work.selected) + TextOf(work.integers) + TextOf(work.pieces);
        });
}

TEST_F(FailingMemoryTest, UnitsAreChosenAgain) {
    struct Work {
        std::unique_ptr<MUnitCtrl> units;
        CString label;
    };
    WorkInShortages<Work>(
        [](Work &work) {
            if (!work.units)
                work.units = std::make_unique<MUnitCtrl>(nullptr);
            work.units->Initialize(0);
            work.units->SetUnitSystemType(1, 0);
            work.units->GetUnitSystem(9, work.label);
        },
        [](Work const &work) { return Utf8Of(work.label) + std::to_string(work.units->ConvertUnitDataIn(9, 1.0)); });
}

namespace {

/// Three by three fields, turned a little, an arc in one of the walls, a hole in another field, a loose end.
std::vector<DrawingCurve> Fields() {
    std::vector<DrawingCurve> curves;
    auto const at = [](int column, int row) {
        return DrawingPoint{10.0 * column - 1.0 * row, 1.0 * column + 10.0 * row};
    };
    auto const add = [&](DrawingPoint start, DrawingPoint end) {
        DrawingCurve &curve = curves.emplace_back();
        curve.id = static_cast<unsigned int>(curves.size());
        curve.start = start;
        curve.end = end;
    };
    for (int i = 0; i < 4; ++i) {
        add(at(i, 0), at(i, 3));
        add(at(0, i), at(3, i));
    }
    add({13.0, 13.0}, {17.0, 14.0});
    add({17.0, 14.0}, {14.0, 17.0});
    add({14.0, 17.0}, {13.0, 13.0});
    add({3.0, 3.0}, {5.0, 6.0});
    return curves;
}

} // namespace

TEST_F(FailingMemoryTest, TheDomainMakerCanBeSetUpAgain) {
    DrawingPieces const cut = CutDrawingCurves(Fields());
    WorkInShortages<std::unique_ptr<MDomainMaker>>(
        [&cut](std::unique_ptr<MDomainMaker> &maker) {
            // A maker that was left in the middle of its work may be asked to go on, with any result.
            if (maker)
                maker->MakeDomain();
            else
                maker = std::make_unique<MDomainMaker>();
            *maker = MDomainMaker();
            for (DrawingPiece const &piece : cut.pieces)
                maker->AddCurv(piece.curve, {piece.start.x, piece.start.y}, {piece.end.x, piece.end.y});
            MArray<DM_VTEX> bow{{30.0, 3.0}, {35.0, 8.0}, {29.0, 13.0}};
            maker->AddCurvedCurvOnce(100, bow);
            maker->MakeDomain();
        },
        [](std::unique_ptr<MDomainMaker> const &maker) {
            std::string text;
            for (DM_SURF const &surf : maker->GetResultSurf()) {
                text += TextOf(surf.Curv) + TextOf(surf.Vtex);
                for (DM_SURF_SUB const &hole : surf.Holes)
                    text += "hole " + TextOf(hole.Curv);
            }
            return text;
        });
}

TEST_F(FailingMemoryTest, DrawingsAreMadeAgain) {
    WorkInShortages<DrawingResult>([](DrawingResult &result) { result = MakeDrawingDomains(Fields()); },
                                   [](DrawingResult const &result) {
                                       std::string text;
                                       for (DrawingDomain const &domain : result.domains)
                                           text += std::to_string(domain.area) + ' ';
                                       return text + std::to_string(result.leftovers.size());
                                   });
}

} // namespace zvi::lib::test
