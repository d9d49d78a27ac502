// Controllers that write down what they are told.
#pragma once

#include "platform/controllers/UIViewController.h"

#include <map>
#include <string>

using Lines = std::vector<std::string>;

// Every controller of a test writes into the same log, under its name: "list will appear". What a message
// is to do besides is kept by message.
class LoggingController final : public UIViewController {
public:
    LoggingController(std::string name, Lines& log)
        : m_name(std::move(name))
        , m_log(log)
    {
    }

    void viewDidLoad() override { told("did load"); }
    void viewWillAppear(Animated) override { told("will appear"); }
    void viewDidAppear(Animated) override { told("did appear"); }
    void viewWillDisappear(Animated) override { told("will disappear"); }
    void viewDidDisappear(Animated) override { told("did disappear"); }
    void viewWillLayoutSubviews() override { told("will lay out"); }
    void viewDidLayoutSubviews() override
    {
        told("did lay out");
        UIViewController::viewDidLayoutSubviews();
    }
    void willMoveToParentViewController(UIViewController* parent) override
    {
        told(parent ? "will move in" : "will move out");
    }
    void didMoveToParentViewController(UIViewController* parent) override
    {
        told(parent ? "did move in" : "did move out");
    }

    std::map<std::string, std::function<void()>> reactions;

private:
    void told(const std::string& message)
    {
        m_log.push_back(m_name + ' ' + message);
        const auto reaction = reactions.find(message);
        if (reaction == reactions.end())
            return;
        const auto react = std::exchange(reaction->second, nullptr); // once
        if (react)
            react();
    }

    const std::string m_name;
    Lines& m_log;
};
