#pragma once

#include "app/DocumentDisplay.h"
#include "app/DocumentList.h"
#include "app/NewDocument.h"
#include "app/PaneViews.h"
#include "app/ScreenBatch.h"
#include "core/app/FakeDocument.h"
#include "support/TestRecovery.h"

#include <gtest/gtest.h>
#include <vector>

// Panes without windows or places, which show CaretViews.
class FakePanes final : public PaneViews {
public:
    ~FakePanes() { CloseAll(); }

    Pane* Active() const override { return active; }
    void SetActive(Pane* pane) override { active = pane; }
    Pane* First() const override { return panes.head; }
    Pane* Next(const Pane& pane) const override { return pane.next ? pane.next : panes.head; }
    Pane* PaneOf(const View* view) const override {
        for (Pane* pane = panes.head; pane; pane = pane->next)
            if (pane->view == view) return pane;
        return nullptr;
    }
    Document* DocumentIn(const Pane& pane) const override {
        if (everywhere) return everywhere;
        return pane.view ? ViewIn(pane).document : nullptr;
    }
    Pane* AddFirst() override {
        if (!makesPanes) return nullptr;
        panes.Append(new Pane);
        return panes.tail;
    }
    bool Split(Pane& pane, bool vertical, View& view) override {
        if (!makesPanes) return false;
        splits.push_back(vertical);
        auto* const made = new Pane;
        made->view = &view;
        panes.InsertAfter(&pane, made);
        return true;
    }
    void Close(Pane& pane) override {
        panes.Remove(&pane);
        delete &pane;
        active = panes.head;
    }
    void CloseAll() override {
        active = nullptr;
        while (Pane* const pane = panes.TakeHead()) delete pane;
    }
    void SetView(Pane& pane, View& view) override { pane.view = &view; }
    void GoToLine(const Pane& pane, uint32_t line) override { ViewIn(pane).caretLine = line; }
    void Focus(const Pane& pane) override { focused = &pane; }
    void FocusFrame() override { focused = nullptr; }

    static CaretView& ViewIn(const Pane& pane) { return *reinterpret_cast<CaretView*>(pane.view); }
    // A pane at the end, which shows nothing.
    Pane& Add() {
        panes.Append(new Pane);
        return *panes.tail;
    }

    Document* everywhere = nullptr; // what every pane shows, whatever its view
    const Pane* focused = nullptr;  // null: the frame itself, or nothing
    bool makesPanes = true;
    std::vector<bool> splits; // vertical or not

private:
    List<Pane> panes;
    Pane* active = nullptr;
};

// Counts what is asked of the frame's window.
class FakeFrameDisplay final : public FrameDisplay {
public:
    void LayOutNow() override { ++layouts; }
    void RefreshTitleNow() override { ++titles; }
    void RefreshStatusNow() override { ++statuses; }
    void ClearStatusFields() override { ++clears; }
    void SetRedraw(bool on) override {
        ++redrawChanges;
        draws = on;
    }

    int layouts = 0;
    int titles = 0;
    int statuses = 0;
    int clears = 0;
    int redrawChanges = 0;
    bool draws = true;
};

// Documents in panes.
class PaneDocumentsTest : public ::testing::Test {
protected:
    FakeDocument& AddFile(const std::u16string& path) {
        auto* const document = FakeDocument::WithFile(path);
        EXPECT_TRUE(documents.Add(document));
        return *document;
    }
    FakeDocument& AddOutput(const std::u16string& title, bool running) {
        auto* const document = FakeDocument::WithTitle(title);
        document->isOutput = true;
        document->running = running;
        EXPECT_TRUE(documents.Add(document));
        return *document;
    }
    Pane& ActivePane() {
        Pane* const pane = display.TargetPane();
        EXPECT_NE(pane, nullptr);
        return *pane;
    }

    DocumentServices services{{recoveryServices, CaretView::Make, nullptr, {}}, {recoveryServices}};
    FakePanes panes;
    DocumentList documents;
    FakeFrameDisplay screen;
    ScreenBatch batch{screen};
    DocumentDisplay display{documents, panes, batch};
};
