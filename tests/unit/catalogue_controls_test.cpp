// The lists of the dialog as the catalogue fills them, over real controls.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "dialog/find_dialog.h"
#include "module/module_state.h"
#include "outside/blx_registry.h"
#include "outside/md_registry.h"
#include "search/property_criteria.h"
#include "tests/unit/dialog_controls.h"

namespace {

class CatalogueControls : public testing::Test {
protected:
    CatalogueControls() {
        dialog_.dialogWindow = controls_.Window();
        ShowWindow(controls_.Window(), SW_SHOW);
    }

    LRESULT Send(int control, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return SendDlgItemMessageW(controls_.Window(), control, message, wParam, lParam);
    }
    LRESULT Count(int control) { return Send(control, CB_GETCOUNT); }
    LONG Data(int control, int item) {
        return static_cast<LONG>(Send(control, CB_GETITEMDATA, static_cast<WPARAM>(item)));
    }
    // Chooses the entry with this data; false without one.
    bool Choose(int control, LONG data) {
        for (int item = 0; item < Count(control); ++item) {
            if (Data(control, item) != data) continue;
            Send(control, CB_SETCURSEL, static_cast<WPARAM>(item));
            return true;
        }
        return false;
    }
    std::string Selected(int control) {
        WCHAR text[kLabelLength] = {};
        GetDlgItemTextW(controls_.Window(), control, text, kLabelLength);
        return wtext::ToUtf8(text);
    }
    // Which value control shows, and whether it can be used.
    std::string ValueControl() {
        std::string shown;
        for (const int control : {IDC_VALUE_EDIT, IDC_VALUE_LIST, IDC_VALUE_DATE}) {
            const HWND window = GetDlgItem(controls_.Window(), control);
            if (!IsWindowVisible(window)) continue;
            shown += control == IDC_VALUE_EDIT   ? "edit"
                     : control == IDC_VALUE_LIST ? "list"
                                                 : "date";
            shown += IsWindowEnabled(window) ? "" : " off";
        }
        return shown;
    }
    bool CanAdd() { return IsWindowEnabled(GetDlgItem(controls_.Window(), IDC_ADD)) != FALSE; }

    MDxFileNameNode* slot_ = nullptr;
    SRxFindDialog dialog_{SrResReturnHandle(), &slot_, nullptr, nullptr, nullptr};
    DialogControls controls_{SrResReturnHandle()};
};

TEST_F(CatalogueControls, PropertiesOfEachKind) {
    const LONG customs = 23;
    const struct {
        eLookFor lookFor;
        bool onlyAssemblies;
        LONG count;
    } kRows[] = {
        {eLookForNone, false, 39 + customs},
        {eLookForDocuments, false, 39 + customs},
        {eLookForDocuments, true, 39 + 16 + customs},
        {eLookForConstraints, false, 0},
        {eLookForConstraints, true, 8},
        {eLookForFasAssembly, true, 7},
        {eLookForFasAssembly, false, 0},
        {eLookForWelds, true, 6},
        {eLookForWelds, false, 0},
        {eLookForFasSketch, false, 4},
        {eLookForFasPart, true, 5},
        {eLookForFiles, true, 0},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(testing::Message() << row.lookFor << " " << row.onlyAssemblies);
        dialog_.lookFor = row.lookFor;
        dialog_.SetOnlyAssem(row.onlyAssemblies);
        EXPECT_TRUE(dialog_.InitProperties());
        EXPECT_EQ(row.count, Count(IDC_PROPERTY_LIST));
        EXPECT_EQ(-1, Send(IDC_PROPERTY_LIST, CB_GETCURSEL));
    }
}

TEST_F(CatalogueControls, CustomPropertiesOfTheRegistry) {
    WCHAR path[kPathLength] = TEXT("\\Wardstone\\CustomProps");
    const HKEY key = MDxCreateRegistryKey(HKEY_CURRENT_USER, path, kPathLength);
    ASSERT_NE(nullptr, key);
    const WText names[] = {TEXT("Supplier"), TEXT("finish"), WText(200, 'x')};
    for (const WText& name : names) {
        HKEY subkey = nullptr;
        ASSERT_EQ(0u, BLxPref_Reg::CreateKey(key, name.c_str(), &subkey));
        BLxPref_Reg::CloseKey(subkey);
    }
    dialog_.InitProperties();
    // "Finish" is one of the fixed names too.
    EXPECT_EQ(39 + 23 + 2, Count(IDC_PROPERTY_LIST));
    for (const WText& name : names) {
        const LRESULT item = Send(IDC_PROPERTY_LIST, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                  reinterpret_cast<LPARAM>(name.c_str()));
        ASSERT_LE(0, item);
        EXPECT_EQ(-1, Data(IDC_PROPERTY_LIST, static_cast<int>(item)));
        EXPECT_TRUE(MDxDeleteRegistryKey(key, name.c_str()));
    }
    BLxPref_Reg::CloseKey(key);
}

TEST_F(CatalogueControls, ConditionsAndValueControls) {
    dialog_.SetOnlyAssem(true);
    (void)wtext::CopyWhole(dialog_.appUserName, kLabelLength, TEXT("J\u00D6RG"));
    (void)wtext::CopyWhole(dialog_.loginUserName, kLabelLength, TEXT("j\u00F6rg"));
    dialog_.InitProperties();
    const struct {
        LONG property;
        LONG condition;     // 0: the one chosen at first
        const char* shown;  // the conditions' number, the chosen one, the value control
        bool canAdd;
    } kRows[] = {
        {kTitle, 0, "6 begins with, edit", false},
        {kTitle, COND_EQUALS, "6 equals, edit", true},
        {kTitle, COND_DIFFERS, "6 differs from, edit", true},
        {kTitle, COND_ANY_VALUE, "6 has any value, edit off", true},
        {kLastSavedBy, 0, "9 begins with, edit", false},  // the two users have one name
        {kEstimatedCost, 0, "4 is less than, edit", false},
        {kDateCreated, 0, "11 has any date, edit off", true},
        {kDateCreated, COND_ON_DATE, "11 falls on, date", true},
        {PROP_FILE_TYPE, 0, "13 Models (parts and assemblies), edit off", true},
        {PROP_DESIGN_STATE, 0, "2 is equal to, list", true},
    };
    for (const auto& row : kRows) {
        ASSERT_TRUE(Choose(IDC_PROPERTY_LIST, row.property)) << row.property;
        dialog_.InitConditions();
        if (row.condition != 0) {
            ASSERT_TRUE(Choose(IDC_CONDITION_LIST, row.condition)) << row.property;
        }
        SetDlgItemTextW(controls_.Window(), IDC_VALUE_EDIT, TEXT(""));
        EXPECT_TRUE(dialog_.EnableValueEdit());
        EXPECT_EQ(row.shown, std::to_string(Count(IDC_CONDITION_LIST)) + " " +
                                 Selected(IDC_CONDITION_LIST) + ", " + ValueControl());
        EXPECT_EQ(row.canAdd, CanAdd()) << row.shown;
    }
}

TEST_F(CatalogueControls, ConditionsOfCustomProperties) {
    dialog_.InitProperties();
    dialog_.InitConditions();  // nothing is selected
    EXPECT_EQ(static_cast<LRESULT>(ConditionsOf(eConditionList::All).size()),
              Count(IDC_CONDITION_LIST));
    const LRESULT added =
        Send(IDC_PROPERTY_LIST, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(TEXT("SPARE part")));
    Send(IDC_PROPERTY_LIST, CB_SETITEMDATA, static_cast<WPARAM>(added), -1);
    Send(IDC_PROPERTY_LIST, CB_SETCURSEL, static_cast<WPARAM>(added));
    dialog_.InitConditions();
    EXPECT_EQ(2, Count(IDC_CONDITION_LIST));
    Send(IDC_PROPERTY_LIST, CB_SETCURSEL, static_cast<WPARAM>(-1));
    SetDlgItemTextW(controls_.Window(), IDC_PROPERTY_LIST, TEXT("Spare part"));
    dialog_.InitCustomConditions(-1);
    EXPECT_LT(2, Count(IDC_CONDITION_LIST)) << "typed, not chosen";
}

TEST_F(CatalogueControls, WhatDecidesMoreThanTheProperty) {
    dialog_.SetOnlyAssem(true);
    dialog_.InitProperties();
    ASSERT_TRUE(Choose(IDC_PROPERTY_LIST, PROP_COMP_COLOR));
    dialog_.InitConditions();
    EXPECT_EQ(0, Count(IDC_VALUE_LIST)) << "the caller gave no colours";
    EXPECT_TRUE(CanAdd());
    for (const WCHAR* colour : {TEXT("red"), TEXT("blue")})
        ASSERT_TRUE(dialog_.params.AddColor(colour, false));
    dialog_.EnableValueEdit();
    EXPECT_EQ(2, Count(IDC_VALUE_LIST));
    EXPECT_EQ(1, Data(IDC_VALUE_LIST, 1));
    EXPECT_EQ("red", Selected(IDC_VALUE_LIST));

    // Types of files to import, where a caller waits for a picked file.
    for (const bool picks : {false, true}) {
        dialog_.SetModal(picks);
        dialog_.SetInApp(picks);
        dialog_.SetOnlyAssem(false);
        ASSERT_TRUE(Choose(IDC_PROPERTY_LIST, PROP_FILE_TYPE));
        dialog_.InitConditions();
        EXPECT_EQ(picks ? 17 : 13, Count(IDC_CONDITION_LIST));
    }

    const struct {
        eAccessPoint accessPoint;
        LONG features;
    } kFeatures[] = {{eAccessNone, 18},
                     {eAccessAssembly, 18},
                     {eAccessPart, 41},
                     {eAccessPartAlt, 51},
                     {eAccessFindFiles, 18}};
    dialog_.lookFor = eLookForFasPart;
    dialog_.InitProperties();
    for (const auto& row : kFeatures) {
        dialog_.SetAccessPoint(row.accessPoint);
        ASSERT_TRUE(Choose(IDC_PROPERTY_LIST, PROP_FAS_TYPE));
        dialog_.InitConditions();
        EXPECT_EQ(row.features, Count(IDC_VALUE_LIST)) << row.accessPoint;
    }
}

TEST_F(CatalogueControls, InputThatFits) {
    const struct {
        LONG property;
        const WCHAR* text;
        LONG condition;
        bool fits;
    } kRows[] = {
        {PROP_COMP_DOF_COUNT, TEXT("12"), COND_NUM_EQUALS, true},
        {PROP_COMP_DOF_COUNT, TEXT(""), COND_NUM_EQUALS, true},
        {PROP_COMP_DOF_COUNT, TEXT("12a"), COND_NUM_EQUALS, false},
        {PROP_COMP_DOF_COUNT, TEXT("1.5"), COND_NUM_EQUALS, false},
        {PROP_COMP_DOF_COUNT, TEXT(" "), COND_NUM_EQUALS, false},
        {kEstimatedCost, TEXT("1.5"), COND_LESS_THAN, true},
        {kEstimatedCost, TEXT("1.5 "), COND_LESS_THAN, false},
        {PROP_CONSTR_VALUE, TEXT("x"), COND_LESS_THAN, true},
        {kTitle, TEXT("x"), COND_EQUALS, true},
        {-1, TEXT("x"), COND_EQUALS, true},
        {-1, TEXT("x"), COND_NUM_DIFFERS, false},
        {-1, TEXT("-2e3"), COND_GREATER_THAN, true},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(row.fits, dialog_.IsInputOk(row.property, row.text, row.condition))
            << row.property << " " << wtext::ToUtf8(row.text);
    }
    EXPECT_FALSE(dialog_.LoadAString(IDC_VALUE_LIST, 1));
    EXPECT_FALSE(dialog_.SetAString(IDC_LOOK_FOR_LABEL, 1));
    EXPECT_EQ("&Look for:", Selected(IDC_LOOK_FOR_LABEL));
}

// One text stands for a property of several kinds of thing; what is looked for decides.
TEST_F(CatalogueControls, AComposedCriterionReachesItsSetter) {
    const struct {
        eLookFor lookFor;
        LONG property;
        eCritTest test;
    } kRows[] = {
        {eLookForDocuments, kNoteText, eCritTest::ComponentNote},
        {eLookForConstraints, kNoteText, eCritTest::ConstrNote},
        {eLookForConstraints, kNoteAuthor, eCritTest::ConstrNote},
        {eLookForFasAssembly, PROP_FAS_NAME, eCritTest::FasName},
        {eLookForFasSketch, PROP_FAS_NAME, eCritTest::FasName},
        {eLookForFasPart, PROP_FAS_NAME, eCritTest::FasName},
        {eLookForWelds, PROP_WELD_NAME, eCritTest::WeldName},
    };
    dialog_.SetOnlyAssem(true);
    for (const auto& row : kRows) {
        SCOPED_TRACE(testing::Message() << row.lookFor << " " << row.property);
        dialog_.OnCommandNewSearch();
        dialog_.lookFor = row.lookFor;
        dialog_.InitProperties();
        ASSERT_TRUE(Choose(IDC_PROPERTY_LIST, row.property));
        dialog_.InitConditions();
        SetDlgItemTextW(controls_.Window(), IDC_VALUE_EDIT, TEXT("x"));
        ASSERT_TRUE(dialog_.OnCommandAdd());
        const SRxCriteriaNode* added = dialog_.criteriaHead->nextCriterion;
        ASSERT_NE(nullptr, added);
        const LONG category = CategoryMeantBy(row.lookFor);
        EXPECT_EQ(category != 0 ? category : 11, added->propertyCategory);
        MDxCritNode record;
        EXPECT_TRUE(CarryOccurrenceCriterion(false, *added, &record));
        EXPECT_EQ(row.test, record.Test());
    }
}

}  // namespace
