# The front door. Every target does its own set-up, says what it does and fails with one clear line.
.PHONY: help run test device page dist check tool bench fuzz clean
.DEFAULT_GOAL := help

help:
	@echo "make run [FILE=path]  build the module and print a definition file through a script"
	@echo "make test             build everything and pass all tests"
	@echo "make device           build the module for the handheld"
	@echo "make page             build the page that opens files in a browser"
	@echo "make dist             pack the release: a zip, a set-up program for Windows, checksums"
	@echo "make tool             build zelsketch alone"
	@echo "make check            the fast loop: build and test the format library and zelsketch (no Wine)"
	@echo "make bench            measure reading, writing and scripts, as ratios to a floor"
	@echo "make fuzz [SECONDS=n] run each fuzz target for a while (60 s)"
	@echo "make clean            remove the build folder"

run:
	@scripts/setup windows
	@scripts/build windows-x64
	@scripts/run $(if $(FILE),"$(FILE)")

test:
	@scripts/setup native windows device page
	@scripts/test native native-asan windows-x64 windows-x86 emulator page

device:
	@scripts/setup device
	@scripts/build device

page:
	@scripts/setup page
	@scripts/build page

dist:
	@scripts/setup windows device page
	@scripts/build windows-x64 ZEL_BRU zelsketch
	@scripts/build windows-x86 ZEL_BRU zelsketch
	@scripts/build device
	@scripts/build page
	@scripts/dist build/dist x86-unicode windows handheld

check:
	@scripts/setup native
	@TESTS="-LE slow" scripts/test native

tool:
	@scripts/setup tool
	@scripts/build tool zelsketch manual
	@echo "tool: build/tool/zelsketch"

bench:
	@scripts/setup native windows device page bench
	@scripts/bench

fuzz:
	@scripts/setup native fuzz
	@scripts/fuzz $(SECONDS)

clean:
	rm -rf build
