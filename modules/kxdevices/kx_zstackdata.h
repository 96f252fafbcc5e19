// CKxZStackData: the parameters of a Z series.
#pragma once

#include <optional>
#include <vector>

#include <kxdevices/kx_zstackrules.h>
#include <kxdevices/kxdevices_api.h>

// The record that a Z stack panel edits: where the series starts and ends, its centre, its step and its planes, and the
// Z devices that can perform it. It belongs to the host, which reads it when the series is to be taken. It moves
// nothing.
//
// Positions and distances are in micrometres, kept in whole nanometres: what is set is rounded to the nearest one,
// halves away from zero. Setters answer 0, or one of the codes of EKxZStackStatus (kx_zstackrules.h) for what cannot
// be, and have then changed nothing; -17 is kept for what lies outside the range of the current Z device, because the
// panel then offers to move the other end. Without a device, positions are not limited. What moves with what is told in
// docs/zstack.md.
//
// The type says what holds the stack (bits 0 and 1); bit 2 makes a second set of the same types and means nothing to
// the record:
//
//     0, 1   its top and bottom, which are positions of the Z device
//     2      its home, with equal distances above and below
//     3      its home, with a distance above and one below
//
// While a stack around home (2, 3) has no home, its top and bottom are distances from wherever Z stands when the series
// starts, and the device limits only how long the stack may be.
//
// Outputs may be null. All accessors are virtual, so that a host can put a record of its own in the place of this one;
// new ones go to the end. Getters are const, and those of a substitute must be (`int GetTop(double*) const override`),
// or they silently do not override. A copy is a record of its own.
class KXDEVICES_API CKxZStackData {
public:
    // Type 0, nothing set, no device.
    CKxZStackData();
    // Member by member.
    CKxZStackData(const CKxZStackData& other);
    CKxZStackData& operator=(const CKxZStackData& other);
    virtual ~CKxZStackData();

    // The type, 0 to 7. A change leaves the planes where they are; a stack around home gets a home in its middle if
    // that is where it must be, and distances from no home, which are no positions, return to not set.
    virtual int GetType(int* type) const;
    virtual int SetType(int type);

    // The ends and the home, in micrometres. Without `adjust`, a value outside the device's range, or on the wrong side
    // of the other end, is refused. With it the other end may move to make room: at the end of the device's range the
    // stack keeps its length; so does one whose end is put beyond the other, unless that is on the wrong side of home.
    // The home of a stack around it takes both ends along, as far as the device's range lets them.
    virtual int GetTop(double* top) const;
    virtual int GetBottom(double* bottom) const;
    virtual int GetHome(double* home) const;
    virtual int SetTop(double top, bool adjust);
    virtual int SetBottom(double bottom, bool adjust);
    virtual int SetHome(double home);

    // Back to not set; always 0. Without its home, the ends of a stack around it stay as distances from it.
    virtual int ResetTop();
    virtual int ResetBottom();
    virtual int ResetHome();

    // The step in micrometres, at least a nanometre, and the number of planes, 1 to a million. Once both ends are set,
    // each fits the other: a step gives the planes that fit, floor(range / step) + 1; a count gives the largest step,
    // in whole nanometres, with which just so many fit, and is refused when there is none. A count of 1, and the count
    // that is held already, keep the step. An end that moves keeps the step.
    virtual int GetStep(double* step) const;
    virtual int SetStep(double step);
    virtual int GetCount(unsigned int* count) const;
    virtual int SetCount(unsigned int count);

    // The step that loses no detail along Z, in micrometres to the nearest nanometre: wavelength / (2 n (1 - cos a)),
    // sin a = NA / n, of the objective and the wavelength set below. Not set before both are.
    virtual int GetStepSuggested(double* step) const;
    // The numerical aperture, 0.01 to the immersion's refractive index, which is 1 to 3.
    virtual int SetObjective(double numericalAperture, double immersionIndex);
    // The wavelength of the light that is observed, 100 to 10,000 nm.
    virtual int SetWavelength(double nanometres);

    // The position in micrometres of plane `index`, which is below the count, counted upwards from the lowest; and what
    // is left of the range beyond the last plane, which is less than a step, or all of it for a single plane that was
    // asked for. Not set before both ends and the count are.
    virtual int GetPlane(unsigned int index, double* position) const;
    virtual int GetRemainder(double* remainder) const;

    // Whether the planes of a stack held by its ends are counted from its top, so that the top is one of them and what
    // is left lies at the bottom; false at first.
    virtual int GetAbsoluteZStackTopPreserved(bool* preserved) const;
    virtual int SetAbsoluteZStackTopPreserved(bool preserved);

    // Whether Z stays where it is when the piezo goes to its home, so that the piezo is centred and the focus stays;
    // false at first. Kept for the host, the record does nothing with it.
    virtual int GetKeepZOnPiezoHome(bool* keep) const;
    virtual int SetKeepZOnPiezoHome(bool keep);

    // The Z devices, counted from 0 in the order in which they are added, each with its range in micrometres; a minimum
    // above the maximum is refused. Clearing takes all away; the numbers of the stack stay.
    virtual int AddZDevice(double rangeMin, double rangeMax, unsigned int* device);
    virtual int ClearZDevices();
    virtual int GetZDeviceCount(unsigned int* count) const;

    // The device that performs the series; not set until one is chosen. The stack stays where it is in the sample: the
    // positions change by the difference between where both devices stand, if that is known, then are moved into the
    // new device's range. A stack too long for that range loses its ends, and its home if that holds it.
    virtual int GetZDevice(unsigned int* device) const;
    virtual int SetZDevice(unsigned int device);

    // The range of the current device.
    virtual int GetZRangeMin(double* position) const;
    virtual int GetZRangeMax(double* position) const;

    // Where the current device stands. The host keeps it up to date, for every device. It may lie outside the range:
    // drives report what they measure.
    virtual int GetZPosition(double* position) const;
    virtual int SetZPosition(unsigned int device, double position);

    // Whether the other record describes the same series: type, ends, home, step, count, device and the two choices
    // above. Where Z stands, the objective and the list of devices do not count.
    virtual int IsEqual(const CKxZStackData& other, bool* equal) const;

private:
    struct Device {
        kx::zstack::Range range;
        std::optional<kx::zstack::Nm> position;
    };
    struct Objective {
        double numericalAperture, immersionIndex;
    };

    const Device* Current() const;
    kx::zstack::Range Limits() const;
    int Take(const kx::zstack::Outcome& outcome);
    int NoPosition(double micrometres) const;

    kx::zstack::Stack m_stack;
    std::vector<Device> m_devices;
    std::optional<unsigned int> m_device;
    std::optional<Objective> m_objective;
    std::optional<double> m_wavelength;
    bool m_topPreserved = false;
    bool m_keepZ = false;
};
