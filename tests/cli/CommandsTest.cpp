#include "cli/CliBench.hpp"

namespace Tamber::Cli {
namespace {

TEST_F(CliTest, TheWholeJobOnTheSample) {
    const Ran job = Run({"auto", Sample("greeting-16f84a")});
    EXPECT_EQ(job.Status, 0) << job.Errors;
    EXPECT_EQ(job.Errors, "");
    EXPECT_EQ(job.Out,
              "Erasing Program Memory...   OK!\n"
              "Erasing EEPROM...   OK!\n"
              "Erasing ID Locs...   OK!\n"
              "Erasing Config Word...   OK!\n"
              "Blank Checking Program Memory...   OK!\n"
              "Blank Checking EEPROM...   OK!\n"
              "Blank Checking Config...   OK!\n"
              "Programming Program Memory...   OK!\n"
              "Programming EEPROM...   OK!\n"
              "Programming ID and Config...   OK!\n"
              "Verifying Program Memory...   OK!\n"
              "Verifying EEPROM...   OK!\n"
              "Verifying ID Locs...   OK!\n"
              "Verifying Conig Word...   OK!\n");
    EXPECT_EQ(engine->Memory().ByteAt(0), 0x05) << "the first word of the sample is 1405";

    // Read back, to a file and to standard output alike, it verifies again.
    const Ran read = Run({"read", folder / "out.hex"});
    EXPECT_EQ(read.Out, "Reading Program Memory...   OK!\nReading EEPROM...   OK!\n");
    const Ran piped = Run({"read", "-"});
    EXPECT_EQ(piped.Out, FileText(folder / "out.hex"));
    EXPECT_EQ(piped.Errors, read.Out);
    EXPECT_EQ(Run({"verify", "-"}, piped.Out).Status, 0);
}

TEST_F(CliTest, WithoutABoardAtHandEachCommandCanBeTried) {
    const std::string socket = folder / "socket.hex";
    const std::string sample = Sample("tones-16f877a");
    const std::vector<std::string> simulated{"--simulate", "--socket", socket, "--device",
                                             "pic16f877a"};
    const auto with = [&](std::vector<std::string> words) {
        words.insert(words.end(), simulated.begin(), simulated.end());
        return Run(std::move(words)).Status;
    };
    EXPECT_EQ(with({"blank"}), 0);
    EXPECT_EQ(with({"program", sample}), 0);
    EXPECT_EQ(with({"verify", sample}), 0) << "the socket's file keeps the device";
    EXPECT_EQ(with({"blank"}), 9);
    EXPECT_EQ(with({"erase", "--only", "pm,eeprom"}), 0);
    EXPECT_EQ(with({"verify", sample, "--only", "id,config"}), 0);
    EXPECT_EQ(with({"verify", sample, "--only", "pm"}), 8);
    EXPECT_TRUE(Wire().empty()) << "the port is left alone";
}

TEST_F(CliTest, IdentifyEndsItsWaitWhenTheBoardHasSpoken) {
    const Ran identified = Run({"identify"});
    EXPECT_EQ(identified.Out, "Device: TAMBR\nVersion 1.0\n");
    EXPECT_EQ(desktop.now, std::chrono::milliseconds(20));
    EXPECT_EQ(desktop.openedPath, "/dev/ttyS0");
    EXPECT_THAT(Wire(), ElementsAre("01 54"));

    Simulator::FaultPlan tooMuch;
    tooMuch.IdentificationLength = 11;
    Socket({7, 1024, 64}, tooMuch);
    EXPECT_THAT(Run({"identify"}).Errors, HasSubstr("11 bytes came in answer; a board sends 10."));
}

TEST_F(CliTest, PortsAreGivenByNumberOrPath) {
    std::filesystem::create_symlink("/dev/ttyUSB7", folder / "com2");
    Run({"identify", "--port", "2"});
    EXPECT_EQ(desktop.openedPath, folder / "com2");
    Run({"identify", "--port", "/dev/ttyUSB7"});
    EXPECT_EQ(desktop.openedPath, "/dev/ttyUSB7");
    desktop.portFailure = "Access denied";
    const Ran byNumber = Run({"blank", "--port", "2"});
    EXPECT_EQ(byNumber.Status, 4);
    EXPECT_EQ(byNumber.Errors, "tamber-cli: Communication Port Error: COM2, Access denied\n");
    EXPECT_TRUE(Wire().empty());
}

TEST_F(CliTest, PortsShowsAndSetsWhatTheNumbersStandFor) {
    machine.ports = {{"/dev/null", "USB adapter", "/dev/serial/by-id/usb-adapter"}};
    const Ran set = Run({"ports", "--set", "3=/dev/null"});
    EXPECT_EQ(set.Status, 0);
    EXPECT_EQ(std::filesystem::read_symlink(folder / "com3"), "/dev/null");
    EXPECT_THAT(set.Out, HasSubstr("COM3  " + (folder / "com3").string() + " -> /dev/null\n"));
    EXPECT_THAT(set.Out, HasSubstr("/dev/null  USB adapter\n    /dev/serial/by-id/usb-adapter\n"));
    EXPECT_THAT(set.Errors, HasSubstr("this one stays: /dev/serial/by-id/usb-adapter"));
    EXPECT_EQ(Run({"ports", "--set", "3=/dev/zero"}).Status, 0) << "a link is led elsewhere";
    EXPECT_EQ(std::filesystem::read_symlink(folder / "com3"), "/dev/zero");

    folder.Write("com4", "somebody's file");
    EXPECT_EQ(Run({"ports", "--set", "4=/dev/null"}).Status, 3);
    EXPECT_EQ(FileText(folder / "com4"), "somebody's file");
    EXPECT_EQ(Run({"ports", "--set", "1=/dev/no-such-port"}).Status, 3);
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(folder / "com1")));
}

TEST_F(CliTest, DevicesMarksTheSelectedOne) {
    const Ran listed = Run({"devices", "--json"});
    for (int number = 0; number < 24; ++number) {
        const std::string device = "/devices/" + std::to_string(number);
        EXPECT_EQ(listed.Fact(device + "/selected"),
                  listed.Fact(device + "/name") == "PIC16F84A" ? "true" : "false");
    }
    EXPECT_EQ(listed.Fact("/devices/17/eeprom"), "64");
    EXPECT_THAT(Run({"devices"}).Out, HasSubstr("* PIC16F84A             7   1024     64  yes\n"));
}

TEST_F(CliTest, OnlyTheRegionsAskedForTakePart) {
    EXPECT_EQ(Run({"erase", "--only", "eeprom,config"}).Out,
              "Erasing EEPROM...   OK!\nErasing Config Word...   OK!\n");
    EXPECT_THAT(Wire(), ElementsAre("01 54", "01 67", "01 46", "01 48"));
    for (const auto& refused : std::vector<std::vector<std::string>>{
             {"blank", "--only", "eeprom", "--device", "PIC16F72"},
             {"blank", "--only", "pm", "--device", "PIC12C508A"},
             {"blank", "--only", "pm,ram"},
             {"auto"},
             {"blank", "--device", "PIC99"},
             {"blank", "--socket", "x"},
             {"blank", "blink.hex"},
             {}}) {
        const Ran ran = Run(refused);
        EXPECT_EQ(ran.Status, 2) << testing::PrintToString(refused);
        EXPECT_EQ(ran.Out, "");
        EXPECT_THAT(ran.Errors, testing::StartsWith("tamber-cli: "));
        EXPECT_TRUE(Wire().empty());
    }
    EXPECT_EQ(Run({"read", "-", "--json"}).Fact("/outcome"), "usage");
    EXPECT_EQ(Run({"--quiet", "frobnicate", "blink.hex"}).Errors,
              "tamber-cli: There is no command \"frobnicate\".\n"
              "Run with --help for more information.\n");
}

TEST_F(CliTest, WhatWasAskedForIsAloneOnStandardOutput) {
    terminal = true;
    const Ran shown = Run({"program", Sample("greeting-16f84a"), "--only", "pm"});
    EXPECT_EQ(shown.Out, "Programming Program Memory...   OK!\n");
    EXPECT_THAT(shown.Errors, AllOf(HasSubstr("\rProgramming Program Memory...     "
                                              "[###############---------------] 50%\x1B[K"),
                                    testing::EndsWith("\r\x1B[K")));
    colour = true;
    EXPECT_EQ(Run({"blank", "--only", "pm"}).Out, "\x1B[31mPM not blank at 0000\x1B[0m\n");
    terminal = false;
    EXPECT_EQ(Run({"erase", "--quiet"}).Out, "");
    const Ran quiet = Run({"verify", "--quiet", "--only", "eeprom", Sample("greeting-16f84a")});
    EXPECT_THAT(quiet.Out, testing::StartsWith("Verify Error at 0000\nEEPROM: 31 of 64 words"))
        << "what went wrong is told all the same";
}

TEST_F(CliTest, NothingFromOutsideSteersTheTerminal) {
    engine = std::make_unique<Simulator::BoardEngine>(
        desktop.Clock(), Simulator::DeviceShape{},
        Simulator::Identification{"\x1B[2J\x9B", '1', '\n'});
    desktop.board = engine.get();
    EXPECT_EQ(Run({"identify"}).Out, "Device: ?[2J?\nVersion 1.\n\n");
    EXPECT_EQ(Run({"identify", "--json"}).Fact("/board/version"), "1.\n");
}

}  // namespace
}  // namespace Tamber::Cli
